#include "ui/forms.h"

#include <QDialog>
#include <QMainWindow>

#include "ui_cell_details_window.h"
#include "ui_clipboard_data_fill_window.h"
#include "ui_clipboard_data_join_window.h"
#include "ui_clipboard_data_replace_window.h"
#include "ui_clipboard_data_split_window.h"
#include "ui_clipboard_data_trim_window.h"
#include "ui_clipboard_data_window.h"
#include "ui_final_operations_window.h"
#include "ui_initial_operations_window.h"
#include "ui_join_columns_operation_window.h"
#include "ui_join_lines_operation_window.h"
#include "ui_main_window.h"
#include "ui_preferences_window.h"
#include "ui_previous_job_file_window.h"
#include "ui_previous_jobs_window.h"
#include "ui_rearrange_columns_operation_window.h"
#include "ui_reformat_column_operation_window.h"
#include "ui_replace_character_operation_window.h"
#include "ui_replace_column_operation_window.h"
#include "ui_replace_line_operation_window.h"
#include "ui_save_job_window.h"
#include "ui_set_number_of_columns_operation_window.h"
#include "ui_skip_line_operation_window.h"
#include "ui_trim_column_operation_window.h"
#include "ui_trim_line_operation_window.h"

namespace quillet::ui {

namespace {

template <typename Widget, typename Form>
std::unique_ptr<QWidget> made() {
  auto widget = std::make_unique<Widget>();
  Form().setupUi(widget.get());
  return widget;
}

struct FormOf {
  std::string_view window;
  std::unique_ptr<QWidget> (*make)();
};

constexpr FormOf kForms[] = {
    {"window", made<QMainWindow, Ui::mainWindow>},
    {"clipboardDataWindow", made<QMainWindow, Ui::clipboardDataWindow>},
    {"previousJobsWindow", made<QMainWindow, Ui::previousJobsWindow>},
    {"preferencesWindow", made<QWidget, Ui::preferencesWindow>},
    {"cellDetailsWindow", made<QDialog, Ui::cellDetailsWindow>},
    {"clipboardDataFillWindow", made<QDialog, Ui::clipboardDataFillWindow>},
    {"clipboardDataJoinWindow", made<QDialog, Ui::clipboardDataJoinWindow>},
    {"clipboardDataReplaceWindow", made<QDialog, Ui::clipboardDataReplaceWindow>},
    {"clipboardDataSplitWindow", made<QDialog, Ui::clipboardDataSplitWindow>},
    {"clipboardDataTrimWindow", made<QDialog, Ui::clipboardDataTrimWindow>},
    {"finalOperationsWindow", made<QDialog, Ui::finalOperationsWindow>},
    {"initialOperationsWindow", made<QDialog, Ui::initialOperationsWindow>},
    {"joinColumnsOperationWindow", made<QDialog, Ui::joinColumnsOperationWindow>},
    {"joinLinesOperationWindow", made<QDialog, Ui::joinLinesOperationWindow>},
    {"previousJobFileWindow", made<QDialog, Ui::previousJobFileWindow>},
    {"rearrangeColumnsOperationWindow", made<QDialog, Ui::rearrangeColumnsOperationWindow>},
    {"reformatColumnOperationWindow", made<QDialog, Ui::reformatColumnOperationWindow>},
    {"replaceCharacterOperationWindow", made<QDialog, Ui::replaceCharacterOperationWindow>},
    {"replaceColumnOperationWindow", made<QDialog, Ui::replaceColumnOperationWindow>},
    {"replaceLineOperationWindow", made<QDialog, Ui::replaceLineOperationWindow>},
    {"saveJobWindow", made<QDialog, Ui::saveJobWindow>},
    {"setNumberOfColumnsOperationWindow", made<QDialog, Ui::setNumberOfColumnsOperationWindow>},
    {"skipLineOperationWindow", made<QDialog, Ui::skipLineOperationWindow>},
    {"trimColumnOperationWindow", made<QDialog, Ui::trimColumnOperationWindow>},
    {"trimLineOperationWindow", made<QDialog, Ui::trimLineOperationWindow>},
};

}  // namespace

std::unique_ptr<QWidget> newForm(std::string_view window) {
  for (const FormOf& form : kForms)
    if (form.window == window) return form.make();
  return nullptr;
}

std::vector<std::string> namesOfForms() {
  std::vector<std::string> names;
  for (const FormOf& form : kForms) names.emplace_back(form.window);
  return names;
}

}  // namespace quillet::ui
