#include "ui/accessible_events.h"

#include <utility>

namespace quillet::ui {

namespace {

ReaderListener& listener() {
  static ReaderListener instance;
  return instance;
}

}  // namespace

void tellReaders(QAccessibleEvent& event) {
  if (listener()) listener()(event);
  QAccessible::updateAccessibility(&event);
}

void setReaderListener(ReaderListener heard) {
  listener() = std::move(heard);
}

}  // namespace quillet::ui
