// The pictures of the guide in docs/: a session with several files, filled sheets and a saved job.
#pragma once

#include <QString>

class QApplication;

namespace quillet::ui {

// samples is the folder of the sample files. PNG files in the light palette go to folder, which is made.
// False when one cannot be written.
bool writeGuidePictures(QApplication& application, const QString& samples, const QString& folder);

}  // namespace quillet::ui
