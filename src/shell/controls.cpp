#include "shell/controls.h"

#include <algorithm>
#include <utility>

namespace quillet {

Control::Control(Window& window, std::string name, std::string handler)
    : window_(window), name_(std::move(name)), handler_(std::move(handler)) {
  window_.controls_.push_back(this);
}

void Control::setEnabled(bool enabled) {
  if (std::exchange(isEnabled_, enabled) != enabled) changed();
}

void Control::setHidden(bool hidden) {
  if (std::exchange(isHidden_, hidden) != hidden) changed();
}

void Control::changed() const {
  if (observer_) observer_();
}

void Control::performHandler() {
  if (!handler_.empty()) window_.interface_.commands().perform(handler_, this);
}

void Label::setText(std::u16string text) {
  text_ = std::move(text);
  changed();
}

void Label::setColour(TextColour colour) {
  colour_ = colour;
  changed();
}

Button::Button(Window& window, std::string name, std::u16string title, std::string handler)
    : Control(window, std::move(name), std::move(handler)), title_(std::move(title)) {}

void Button::setTitle(std::u16string title) {
  title_ = std::move(title);
  changed();
}

void Button::setToolTip(std::u16string toolTip) {
  toolTip_ = std::move(toolTip);
  changed();
}

void Button::press() {
  if (isEnabled() && !isHidden()) performHandler();
}

CheckBox::CheckBox(Window& window, std::string name, std::u16string title, std::string handler)
    : Control(window, std::move(name), std::move(handler)), title_(std::move(title)) {}

void CheckBox::setOn(bool on) {
  isOn_ = on;
  changed();
}

void CheckBox::userSets(bool on) {
  setOn(on);
  performHandler();
}

PopUpButton::PopUpButton(Window& window, std::string name, std::vector<Item> items, std::string handler)
    : Control(window, std::move(name), std::move(handler)) {
  setItems(std::move(items));
}

void PopUpButton::setItems(std::vector<Item> items) {
  items_ = std::move(items);
  selectedTag_ = items_.empty() ? 0 : items_.front().tag;
  changed();
}

bool PopUpButton::hasTag(std::int64_t tag) const {
  return std::any_of(items_.begin(), items_.end(), [tag](const Item& item) { return item.tag == tag; });
}

void PopUpButton::selectItemWithTag(std::int64_t tag) {
  if (!hasTag(tag)) return;
  selectedTag_ = tag;
  changed();
}

void PopUpButton::userSelects(std::int64_t tag) {
  selectItemWithTag(tag);
  performHandler();
}

void TextField::setText(std::u16string text) {
  text_ = std::move(text);
  changed();
}

void TextField::setPlaceholder(std::u16string placeholder) {
  placeholder_ = std::move(placeholder);
  changed();
}

// What shows the field has the text already; telling it again would move the cursor.
void TextField::userTypes(std::u16string text) {
  text_ = std::move(text);
}

ComboBox::ComboBox(Window& window, std::string name, std::vector<Item> items)
    : TextField(window, std::move(name)), items_(std::move(items)) {}

void TextView::setText(std::u16string text) {
  text_ = std::move(text);
  ++textVersion_;
  changed();
}

Table::Table(Window& window, std::string name, Source source, std::vector<Column> columns,
             std::string handler)
    : Control(window, std::move(name), std::move(handler)),
      source_(std::move(source)),
      columns_(std::move(columns)) {}

std::u16string Table::cell(std::size_t row, std::size_t column) const {
  if (source_.cell) return source_.cell(row, column);
  Row texts = source_.row(row);
  return column < texts.size() ? std::move(texts[column]) : std::u16string();
}

Table::Column Table::column(std::size_t column) const {
  if (!columnRule_) return columns_[column];
  Column result = columnRule_(column);
  if (const auto width = widthsByUser_.find(column); width != widthsByUser_.end())
    result.width = width->second;
  return result;
}

void Table::setColumns(std::vector<Column> columns) {
  if (!columnRule_ && columns == columns_) return;
  columns_ = std::move(columns);
  columnRule_ = nullptr;
  ++columnsVersion_;
  changed();
}

void Table::setColumns(std::size_t count, ColumnRule rule) {
  ruledColumnCount_ = count;
  columnRule_ = std::move(rule);
  widthsByUser_.clear();
  ++columnsVersion_;
  changed();
}

// What shows the table has the width already.
void Table::userResizesColumn(std::size_t column, int width) {
  if (column >= columnCount()) return;
  if (columnRule_)
    widthsByUser_[column] = width;
  else
    columns_[column].width = width;
}

std::int64_t Table::selectedRow() const {
  return selectedRows_.isEmpty() ? -1 : selectedRows_.lastIndex();
}

IndexSet Table::withinTable(const IndexSet& rows) const {
  const auto last = static_cast<std::int64_t>(rowCount()) - 1;
  IndexSet result;
  for (const auto& range : rows.ranges()) result.addRange(range.first, std::min(range.last, last));
  return result;
}

void Table::tellSelection() const {
  if (selectionChanged_) selectionChanged_();
}

void Table::selectRows(const IndexSet& rows) {
  IndexSet selected = withinTable(rows);
  if (selected == selectedRows_) return;
  selectedRows_ = std::move(selected);
  changed();
  tellSelection();
}

void Table::userSelects(const IndexSet& rows) {
  selectedRows_ = withinTable(rows);
  changed();
  tellSelection();
}

void Table::userDoubleClicks(std::int64_t row) {
  userSelects(IndexSet{row});
  performHandler();
}

void Table::reloadData(Tell tell) {
  IndexSet selected = withinTable(selectedRows_);
  const bool cut = selected != selectedRows_;
  selectedRows_ = std::move(selected);
  changed();
  if (cut && tell == Tell::Yes) tellSelection();
}

void enableControls(bool enable, const Box& inBox) {
  for (Control* control : inBox.controls()) control->setEnabled(enable);
}

void Label::accept(ControlVisitor& visitor) {
  visitor.visit(*this);
}
void Button::accept(ControlVisitor& visitor) {
  visitor.visit(*this);
}
void CheckBox::accept(ControlVisitor& visitor) {
  visitor.visit(*this);
}
void PopUpButton::accept(ControlVisitor& visitor) {
  visitor.visit(*this);
}
void TextField::accept(ControlVisitor& visitor) {
  visitor.visit(*this);
}
void ComboBox::accept(ControlVisitor& visitor) {
  visitor.visit(*this);
}
void TextView::accept(ControlVisitor& visitor) {
  visitor.visit(*this);
}
void Table::accept(ControlVisitor& visitor) {
  visitor.visit(*this);
}
void Box::accept(ControlVisitor& visitor) {
  visitor.visit(*this);
}
void ProgressIndicator::accept(ControlVisitor& visitor) {
  visitor.visit(*this);
}

}  // namespace quillet
