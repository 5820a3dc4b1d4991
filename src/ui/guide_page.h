// Where the guide is on this computer.
#pragma once

#include <QString>
#include <string>

namespace quillet::ui {

// The path of its first page, from the folder of the program: as installed, or in the build tree; as pages
// for a browser, or where they were not made as it is written. "" where there is none.
std::string guidePage(const QString& programFolder);

}  // namespace quillet::ui
