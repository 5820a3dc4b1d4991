#include "ui/binder.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTimer>
#include <memory>
#include <utility>

#include "ui/accessible_events.h"
#include "ui/fitted_width.h"
#include "ui/grid_view.h"
#include "ui/label_colour.h"
#include "ui/large_text_view.h"
#include "ui/preview_columns.h"
#include "ui/row_delegates.h"
#include "ui/table_model.h"
#include "ui/table_view.h"
#include "ui/text_conversion.h"
#include "ui/theme.h"

namespace quillet::ui {

namespace {

constexpr const char* kHiddenPage = "hiddenPage";
constexpr int kSpaceOfRows = 6;  // pixels; what rows have around their texts beyond cells

QString nameOf(const Control& control) {
  return QString::fromStdString(control.name());
}

void showState(const Control& control, QWidget& widget) {
  widget.setEnabled(control.isEnabled());
  if (qobject_cast<QStackedWidget*>(widget.parentWidget())) {
    widget.setProperty(kHiddenPage, control.isHidden());
    showPageInFront(widget);
  } else {
    widget.setVisible(!control.isHidden());
  }
}

class Binder final : public ControlVisitor {
 public:
  Binder(QWidget& form, std::function<void()> changed) : form_(form), changed_(std::move(changed)) {}

  bool bind(Control& control) {
    bound_ = false;
    control.accept(*this);
    return bound_;
  }

  void visit(Label& label) override;
  void visit(Button& button) override;
  void visit(CheckBox& checkBox) override;
  void visit(PopUpButton& popUp) override;
  void visit(TextField& field) override;
  void visit(ComboBox& comboBox) override;
  void visit(TextView& view) override;
  void visit(Table& table) override;
  void visit(Box& box) override;
  void visit(ProgressIndicator& indicator) override;

 private:
  template <typename Widget>
  Widget* find(const Control& control) {
    auto* widget = form_.findChild<Widget*>(nameOf(control));
    bound_ = widget != nullptr;
    return widget;
  }

  // Shows now, and after every change of the control.
  template <typename Show>
  void keepShown(Control& control, QWidget& widget, Show show) {
    const auto showAll = [&control, &widget, show] {
      showState(control, widget);
      show();
    };
    control.setObserver([showAll, changed = changed_] {
      showAll();
      if (changed) changed();
    });
    showAll();
  }

  void bindSelection(Table& table, TableView& view, TableModel& model);
  void bindLine(TextField& field, QLineEdit& edit, QWidget& widget);
  void bindText(TextField& field, QPlainTextEdit& edit);

  QWidget& form_;
  std::function<void()> changed_;
  bool bound_ = false;
};

// A reader tells it at once, wherever the focus is.
void sendAlert(QLabel& label) {
  QAccessibleEvent event(&label, QAccessible::Alert);
  tellReaders(event);
}

void Binder::visit(Label& label) {
  auto* widget = find<QLabel>(label);
  if (!widget) return;
  widget->setTextFormat(Qt::PlainText);
  const bool isStatus = widget->objectName().endsWith(QLatin1String("statusLabel"), Qt::CaseInsensitive);
  // Of what follows it in its form, as any label there.
  const bool isName = widget->property("role").toString() == QLatin1String("name");
  keepShown(label, *widget, [&label, widget, isStatus, isName] {
    const QString text = qString(label.text());
    const bool isNews = isStatus && !text.isEmpty() && text != widget->text();
    widget->setText(text);
    if (isNews) sendAlert(*widget);
    if (!isName) setTextColour(*widget, label.colour());
  });
}

void Binder::visit(Button& button) {
  auto* widget = find<QAbstractButton>(button);
  if (!widget) return;
  keepShown(button, *widget, [&button, widget, formText = widget->text()] {
    // The form's own text has a mnemonic.
    const bool isFormText = qString(button.title()) == withoutMnemonic(formText);
    widget->setText(isFormText ? formText : withoutMnemonics(button.title()));
    if (!button.toolTip().empty()) widget->setToolTip(plainToolTip(qString(button.toolTip())));
    if (widget->text().isEmpty() && widget->accessibleName().isEmpty())
      widget->setAccessibleName(button.toolTip().empty() ? widget->toolTip() : qString(button.toolTip()));
  });
  QObject::connect(widget, &QAbstractButton::clicked, widget, [&button] { button.press(); });
}

void Binder::visit(CheckBox& checkBox) {
  auto* widget = find<QCheckBox>(checkBox);
  if (!widget) return;
  if (widget->text().isEmpty()) widget->setText(withoutMnemonics(checkBox.title()));
  keepShown(checkBox, *widget, [&checkBox, widget] { widget->setChecked(checkBox.isOn()); });
  QObject::connect(widget, &QCheckBox::clicked, widget, [&checkBox](bool on) { checkBox.userSets(on); });
}

void Binder::visit(PopUpButton& popUp) {
  auto* widget = find<QComboBox>(popUp);
  if (!widget) return;
  keepShown(popUp, *widget, [&popUp, widget] {
    const QSignalBlocker blocker(widget);
    const int count = static_cast<int>(popUp.items().size());
    bool same = widget->count() == count;
    for (int i = 0; same && i < count; ++i)
      same = widget->itemText(i) == qString(popUp.items()[static_cast<std::size_t>(i)].title);
    if (!same) {
      widget->clear();
      for (const auto& item : popUp.items()) {
        widget->addItem(qString(item.title), static_cast<qlonglong>(item.tag));
        if (!item.toolTip.empty())
          widget->setItemData(widget->count() - 1, qString(item.toolTip), Qt::ToolTipRole);
      }
    }
    widget->setCurrentIndex(widget->findData(static_cast<qlonglong>(popUp.selectedTag())));
    widget->setToolTip(widget->currentData(Qt::ToolTipRole).toString());
  });
  QObject::connect(widget, &QComboBox::activated, widget,
                   [&popUp, widget](int index) { popUp.userSelects(widget->itemData(index).toLongLong()); });
}

void Binder::bindLine(TextField& field, QLineEdit& edit, QWidget& widget) {
  edit.setMaxLength(std::numeric_limits<int>::max());
  edit.setCompleter(nullptr);
  keepShown(field, widget, [&field, &edit] {
    if (edit.text() != qString(field.text())) edit.setText(qString(field.text()));
    edit.setPlaceholderText(qString(field.placeholder()));
  });
  QObject::connect(&edit, &QLineEdit::textEdited, &edit,
                   [&field](const QString& text) { field.userTypes(u16String(text)); });
  // A field is also done with when it is left, unless its form says that this takes Return.
  const bool onlyReturn = edit.property("onlyReturnEnds").toBool();
  QObject::connect(&edit, onlyReturn ? &QLineEdit::returnPressed : &QLineEdit::editingFinished, &edit,
                   [&field] { field.userEndsEditing(); });
}

void Binder::bindText(TextField& field, QPlainTextEdit& edit) {
  keepShown(field, edit, [&field, &edit] {
    if (edit.toPlainText() == qString(field.text())) return;
    const QSignalBlocker blocker(&edit);
    edit.setPlainText(qString(field.text()));
  });
  QObject::connect(&edit, &QPlainTextEdit::textChanged, &edit,
                   [&field, &edit] { field.userTypes(u16String(edit.toPlainText())); });
}

void Binder::visit(TextField& field) {
  if (auto* line = find<QLineEdit>(field))
    bindLine(field, *line, *line);
  else if (auto* text = find<QPlainTextEdit>(field))
    bindText(field, *text);
}

void Binder::visit(ComboBox& comboBox) {
  auto* widget = find<QComboBox>(comboBox);
  if (!widget || !widget->lineEdit()) {
    bound_ = false;
    return;
  }
  for (const auto& item : comboBox.items()) {
    widget->addItem(qString(item.text));
    const int row = widget->count() - 1;
    widget->setItemData(row, qString(item.note), kNoteRole);
    widget->setItemData(row, qString(item.text) + QLatin1Char(' ') + qString(item.note),
                        Qt::AccessibleTextRole);
  }
  widget->setItemDelegate(new NoteDelegate(widget));
  // The list is as wide as its notes, however narrow the field is.
  widget->view()->setMinimumWidth(widget->view()->sizeHintForColumn(0));
  widget->setCurrentIndex(-1);
  bindLine(comboBox, *widget->lineEdit(), *widget);
  QObject::connect(widget, &QComboBox::textActivated, widget,
                   [&comboBox](const QString& text) { comboBox.userTypes(u16String(text)); });
}

void Binder::visit(TextView& view) {
  auto* widget = find<LargeTextView>(view);
  if (!widget) return;
  widget->setFont(fixedWidthFont());
  keepShown(view, *widget, [&view, widget, shown = std::make_shared<std::uint64_t>(0)] {
    if (std::exchange(*shown, view.textVersion()) == view.textVersion()) return;
    // Not copied, as it may be large: the control has it until it tells of another.
    const std::u16string& text = view.text();
    widget->setText(QString::fromRawData(reinterpret_cast<const QChar*>(text.data()),
                                         static_cast<qsizetype>(text.size())));
  });
}

TableModel::Kind kindOf(const Table& table) {
  const std::string& name = table.name();
  const std::string first = table.columnCount() ? table.column(0).identifier : std::string();
  if (first == "Cil0" || first == "Col0") return TableModel::Kind::Numbered;
  if (name.find("perationsTableView") != std::string::npos) return TableModel::Kind::Operations;
  if (name == "previousJobsWindowJobsTableView") return TableModel::Kind::Jobs;
  return TableModel::Kind::Plain;
}

void dress(TableView& view, TableModel::Kind kind) {
  switch (kind) {
    case TableModel::Kind::Operations:
      view.setItemDelegate(new OperationDelegate(&view));
      view.setRowHeight(42, OperationDelegate::heightOf);
      break;
    case TableModel::Kind::Jobs:
      view.setItemDelegate(new JobDelegate(&view));
      view.setRowHeight(26);
      break;
    case TableModel::Kind::Numbered:
      view.setItemDelegate(new CellDelegate(&view));
      view.setFont(fixedWidthFont());
      view.setRowHeight(22);
      view.verticalHeader()->show();
      view.verticalHeader()->setFixedWidth(65);
      view.verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
      break;
    case TableModel::Kind::Plain:
      view.setItemDelegate(new JobDelegate(&view));
      view.setRowHeight(26);
      break;
  }
  const bool hasHeader = kind == TableModel::Kind::Numbered || kind == TableModel::Kind::Jobs;
  view.horizontalHeader()->setVisible(hasHeader);
  view.horizontalHeader()->setStretchLastSection(kind != TableModel::Kind::Numbered);
}

QItemSelection selectionOf(const Table& table, const TableModel& model) {
  QItemSelection selection;
  const int last = model.columnCount() - 1;
  for (const auto& range : table.selectedRows().ranges())
    selection.select(model.index(static_cast<int>(range.first), 0),
                     model.index(static_cast<int>(range.last), last));
  return selection;
}

// The selection of the view follows the table's, and the other way round. What the user does is told once,
// with the rows as they are then.
void Binder::bindSelection(Table& table, TableView& view, TableModel& model) {
  QObject::connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, &view,
                   [&table, &view, changed = changed_] {
                     if (view.property("showingSelection").toBool()) return;
                     table.userSelects(view.selectedRowIndexes());
                     if (changed) changed();
                   });
  QObject::connect(&view, &TableView::activatedRow, &view,
                   [&table](int row) { table.userDoubleClicks(row); });
  auto* columns = model.kind() == TableModel::Kind::Numbered ? new PreviewColumns(view) : nullptr;
  QObject::connect(&view, &TableView::columnResized, &view, [&table, &model, columns](int column, int width) {
    if (columns) columns->userResizes(column, width);
    table.userResizesColumn(model.tableColumn(column), width);
  });
  keepShown(table, view, [&table, &view, &model, columns, scrolls = std::make_shared<std::uint64_t>(0)] {
    view.setProperty("showingSelection", true);
    model.refresh();
    view.showColumnWidths(table, model.firstColumn());
    if (columns) columns->fit();
    const bool toStart = std::exchange(*scrolls, table.scrollsToStart()) != table.scrollsToStart();
    if (toStart) view.scrollToStart();
    if (view.selectedRowIndexes() != table.selectedRows()) {
      view.selectionModel()->select(selectionOf(table, model), QItemSelectionModel::ClearAndSelect);
      if (const std::int64_t row = table.selectedRow(); row >= 0) {
        view.selectionModel()->setCurrentIndex(model.index(static_cast<int>(row), 0),
                                               QItemSelectionModel::NoUpdate);
        view.scrollTo(model.index(static_cast<int>(row), 0));
      }
    }
    // The row that keys walk on stays in sight.
    if (toStart && view.hasFocus() && table.selectedRow() >= 0)
      view.scrollTo(model.index(static_cast<int>(table.selectedRow()), 0));
    view.setProperty("showingSelection", false);
  });
}

void Binder::visit(Table& table) {
  if (auto* grid = find<GridView>(table)) {
    keepShown(table, *grid, [grid] { grid->refresh(); });
    return;
  }
  auto* widget = find<TableView>(table);
  if (!widget) return;
  const TableModel::Kind kind = kindOf(table);
  auto* model = new TableModel(table, kind, widget);
  widget->setModel(model);
  dress(*widget, kind);
  bindSelection(table, *widget, *model);
  const int addedSpace = kind == TableModel::Kind::Numbered ? 0 : kSpaceOfRows;
  QObject::connect(widget->horizontalHeader(), &QHeaderView::sectionHandleDoubleClicked, widget,
                   [&table, model, widget, addedSpace](int column) {
                     const auto at = model->tableColumn(column);
                     widget->setColumnWidth(column, fittedWidth(*widget, table, at, addedSpace));
                   });
}

void Binder::visit(Box& box) {
  if (auto* widget = find<QWidget>(box)) keepShown(box, *widget, [] {});
}

void Binder::visit(ProgressIndicator& indicator) {
  if (auto* widget = find<QProgressBar>(indicator)) keepShown(indicator, *widget, [] {});
}

}  // namespace

void showPageInFront(QWidget& page) {
  auto* stack = qobject_cast<QStackedWidget*>(page.parentWidget());
  if (!stack) return;
  for (int i = stack->count() - 1; i >= 0; --i) {
    if (stack->widget(i)->property(kHiddenPage).toBool()) continue;
    stack->setCurrentIndex(i);
    return;
  }
}

std::vector<QString> bindControls(Window& window, QWidget& form, std::function<void()> changed) {
  std::vector<QString> missing;
  Binder binder(form, std::move(changed));
  for (Control* control : window.controls())
    if (!binder.bind(*control)) missing.push_back(nameOf(*control));
  return missing;
}

}  // namespace quillet::ui
