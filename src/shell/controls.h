// The controls of the windows without a toolkit: what a label, a button, a table... holds, each under its
// name. The groups of the application own and set them; what shows them observes them and calls the functions
// that begin with "user" or "press", as the test tool does.
//
// A control with a handler performs that command, with itself as the sender, when the user has used it.
// Setting a control from the application performs nothing. Main thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/index_set.h"
#include "shell/text_colour.h"
#include "shell/window.h"

namespace quillet {

class ControlVisitor;

class Control {
 public:
  // The window outlives the control. The handler is the name of a command, or empty.
  Control(Window& window, std::string name, std::string handler = {});
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& name() const { return name_; }
  const std::string& handler() const { return handler_; }
  Window& window() const { return window_; }

  bool isEnabled() const { return isEnabled_; }
  void setEnabled(bool enabled);
  bool isHidden() const { return isHidden_; }
  void setHidden(bool hidden);

  virtual void accept(ControlVisitor& visitor) = 0;

  // What shows the control; called after every change. One at most.
  void setObserver(std::function<void()> observer) { observer_ = std::move(observer); }

 protected:
  void changed() const;
  void performHandler();

 private:
  Window& window_;
  std::string name_;
  std::string handler_;
  bool isEnabled_ = true;
  bool isHidden_ = false;
  std::function<void()> observer_;
};

class Label final : public Control {
 public:
  using Control::Control;
  void accept(ControlVisitor& visitor) override;

  const std::u16string& text() const { return text_; }
  void setText(std::u16string text);
  TextColour colour() const { return colour_; }
  void setColour(TextColour colour);

 private:
  std::u16string text_;
  TextColour colour_ = TextColour::SecondaryLabel;
};

class Button final : public Control {
 public:
  Button(Window& window, std::string name, std::u16string title, std::string handler);
  void accept(ControlVisitor& visitor) override;

  const std::u16string& title() const { return title_; }
  void setTitle(std::u16string title);
  std::int64_t tag() const { return tag_; }
  void setTag(std::int64_t tag) { tag_ = tag; }
  const std::u16string& toolTip() const { return toolTip_; }
  void setToolTip(std::u16string toolTip);

  void press();  // nothing while it is disabled or hidden

 private:
  std::u16string title_;
  std::int64_t tag_ = 0;
  std::u16string toolTip_;
};

class CheckBox final : public Control {
 public:
  CheckBox(Window& window, std::string name, std::u16string title, std::string handler = {});
  void accept(ControlVisitor& visitor) override;

  const std::u16string& title() const { return title_; }
  bool isOn() const { return isOn_; }
  void setOn(bool on);
  void userSets(bool on);

 private:
  std::u16string title_;
  bool isOn_ = false;
};

class PopUpButton final : public Control {
 public:
  struct Item {
    std::int64_t tag = 0;
    std::u16string title;         // localized
    std::u16string toolTip = {};  // localized
  };

  // The first item is selected.
  PopUpButton(Window& window, std::string name, std::vector<Item> items, std::string handler = {});
  void accept(ControlVisitor& visitor) override;

  const std::vector<Item>& items() const { return items_; }
  void setItems(std::vector<Item> items);  // selects the first
  std::int64_t selectedTag() const { return selectedTag_; }
  void selectItemWithTag(std::int64_t tag);  // a tag that no item has changes nothing
  void userSelects(std::int64_t tag);        // the same, then the handler

 private:
  bool hasTag(std::int64_t tag) const;

  std::vector<Item> items_;
  std::int64_t selectedTag_ = 0;
};

class TextField : public Control {
 public:
  using Control::Control;
  void accept(ControlVisitor& visitor) override;

  const std::u16string& text() const { return text_; }
  void setText(std::u16string text);
  const std::u16string& placeholder() const { return placeholder_; }
  void setPlaceholder(std::u16string placeholder);

  void userTypes(std::u16string text);  // is still editing afterwards
  void userEndsEditing() { performHandler(); }

 private:
  std::u16string text_;
  std::u16string placeholder_;
};

// A text field that offers texts.
class ComboBox final : public TextField {
 public:
  struct Item {
    std::u16string text;  // what would be typed
    std::u16string note;  // localized; shown beside it
  };

  ComboBox(Window& window, std::string name, std::vector<Item> items = {});
  void accept(ControlVisitor& visitor) override;

  const std::vector<Item>& items() const { return items_; }

 private:
  std::vector<Item> items_;
};

class TextView final : public Control {
 public:
  using Control::Control;
  void accept(ControlVisitor& visitor) override;

  const std::u16string& text() const { return text_; }
  std::uint64_t textVersion() const { return textVersion_; }  // another one after each setText(); never 0
  void setText(std::u16string text);

 private:
  std::u16string text_;
  std::uint64_t textVersion_ = 1;
};

// Rows are asked from the source when they are shown. Which are selected is held by the table, by index: it
// stays when the rows change, but for rows that are gone.
//
// Columns are a list; or, where there can be millions, a count and a rule that makes the one that is asked
// for.
class Table final : public Control {
 public:
  using Row = std::vector<std::u16string>;  // the texts of one row
  struct Source {
    std::function<std::size_t()> rowCount;
    std::function<Row(std::size_t row)> row;
    // One text of a row, where making all of them costs more; "" beyond the row. May be missing.
    std::function<std::u16string(std::size_t row, std::size_t column)> cell = {};
  };
  struct Column {
    std::string identifier;
    std::u16string title;
    int width = 0;  // in logical pixels; 0 leaves it to what shows the table
    bool titleIsCentred = false;
    bool operator==(const Column&) const = default;
  };
  using ColumnRule = std::function<Column(std::size_t column)>;
  enum class Tell { No, Yes };

  Table(Window& window, std::string name, Source source, std::vector<Column> columns = {},
        std::string handler = {});
  void accept(ControlVisitor& visitor) override;

  std::size_t rowCount() const { return source_.rowCount(); }
  Row row(std::size_t row) const { return source_.row(row); }
  // Of a row that is there; "" for a column beyond it.
  std::u16string cell(std::size_t row, std::size_t column) const;

  std::size_t columnCount() const { return columnRule_ ? ruledColumnCount_ : columns_.size(); }
  Column column(std::size_t column) const;  // of those that are there
  // Another one whenever the application has set columns; never 0.
  std::uint64_t columnsVersion() const { return columnsVersion_; }
  // Columns that are as they were are not told; those by a rule always are. Widths that the user gave go.
  void setColumns(std::vector<Column> columns);
  void setColumns(std::size_t count, ColumnRule rule);
  void userResizesColumn(std::size_t column, int width);  // nothing beyond the columns
  // What shows the table tells how wide it is, in logical pixels; 0 while nothing does.
  int width() const { return width_; }
  void userResizesTable(int width) { width_ = width; }

  const IndexSet& selectedRows() const { return selectedRows_; }
  std::int64_t selectedRow() const;  // the last one; -1 for none
  // Called when the selection has changed.
  void setSelectionChanged(std::function<void()> selectionChanged) {
    selectionChanged_ = std::move(selectionChanged);
  }

  // Rows beyond the table are left out. A selection that stays as it is tells nothing.
  void selectRows(const IndexSet& rows);
  // The same, but always tells: other things may stand in the rows by now.
  void userSelects(const IndexSet& rows);
  // The row alone is selected, then the handler is performed: it is that of the double click. A row beyond
  // the table selects none.
  void userDoubleClicks(std::int64_t row);
  // Shows the rows anew. Rows that are gone are not selected any more, which is told, or not.
  void reloadData(Tell tell = Tell::Yes);

  // What shows the table goes to its first row and column, with the next change; how often that was asked
  // for.
  void scrollToStart() { ++scrollsToStart_; }
  std::uint64_t scrollsToStart() const { return scrollsToStart_; }

 private:
  IndexSet withinTable(const IndexSet& rows) const;
  void tellSelection() const;

  Source source_;
  std::vector<Column> columns_;  // not used with a rule
  ColumnRule columnRule_;
  std::size_t ruledColumnCount_ = 0;
  std::uint64_t columnsVersion_ = 1;
  std::map<std::size_t, int> widthsByUser_;  // of columns by a rule
  int width_ = 0;
  std::uint64_t scrollsToStart_ = 0;
  IndexSet selectedRows_;
  std::function<void()> selectionChanged_;
};

// A part of a window that is shown or hidden as one, and whose controls are enabled as one.
class Box final : public Control {
 public:
  using Control::Control;
  void accept(ControlVisitor& visitor) override;

  void add(Control& control) { controls_.push_back(&control); }  // outlives the use of the box
  const std::vector<Control*>& controls() const { return controls_; }

 private:
  std::vector<Control*> controls_;
};

class ProgressIndicator final : public Control {
 public:
  using Control::Control;
  void accept(ControlVisitor& visitor) override;
};

// Sets whether the controls inside the box are enabled.
void enableControls(bool enable, const Box& inBox);

// One function a kind; those that are not overridden do nothing. A combo box is also a text field.
class ControlVisitor {
 public:
  virtual ~ControlVisitor() = default;
  virtual void visit(Label&) {}
  virtual void visit(Button&) {}
  virtual void visit(CheckBox&) {}
  virtual void visit(PopUpButton&) {}
  virtual void visit(TextField&) {}
  virtual void visit(ComboBox& comboBox) { visit(static_cast<TextField&>(comboBox)); }
  virtual void visit(TextView&) {}
  virtual void visit(Table&) {}
  virtual void visit(Box&) {}
  virtual void visit(ProgressIndicator&) {}
};

}  // namespace quillet
