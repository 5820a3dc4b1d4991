// Pictures of every window and sheet, in the light and the dark palette, with a small session of their own.
#pragma once

#include <QString>

class QApplication;

namespace quillet::ui {

// samples is the folder of the sample files. PNG files go to folder, which is made. False when one cannot be
// written.
bool writeScreenshots(QApplication& application, const QString& samples, const QString& folder);

}  // namespace quillet::ui
