// What is told to screen readers beyond what Qt's widgets tell by themselves.
#pragma once

#include <QAccessible>
#include <functional>

namespace quillet::ui {

// Main thread only.
void tellReaders(QAccessibleEvent& event);

// Hears what is told, whether there is a reader or not: Qt's own handler hears nothing where none is. One at
// most; {} takes it off.
using ReaderListener = std::function<void(const QAccessibleEvent& event)>;
void setReaderListener(ReaderListener listener);

}  // namespace quillet::ui
