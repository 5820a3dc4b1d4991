#include "shell/operation_panels.h"

#include <algorithm>

#include "operations/operation_codes.h"

namespace quillet {

OperationPanels::OperationPanels(UserInterface& interface, const FileSelection& selection)
    : initial_(interface),
      final_(interface),
      replaceCharacter_(interface),
      skipLine_(interface),
      trimLine_(interface),
      replaceLine_(interface),
      joinLines_(interface),
      trimColumn_(interface, selection),
      replaceColumn_(interface, selection),
      reformatColumn_(interface, selection),
      setNumberOfColumns_(interface, selection),
      rearrangeColumns_(interface, selection),
      joinColumns_(interface, selection),
      byCode_{{{OpInitial, &initial_},
               {OpReplaceCharacter, &replaceCharacter_},
               {OpSkipLine, &skipLine_},
               {OpTrimLine, &trimLine_},
               {OpReplaceLine, &replaceLine_},
               {OpJoinLines, &joinLines_},
               {OpTrimColumn, &trimColumn_},
               {OpReplaceColumn, &replaceColumn_},
               {OpReformatColumn, &reformatColumn_},
               {OpSetInitialNumberOfColumns, &setNumberOfColumns_},
               {OpRearrangeColumns, &rearrangeColumns_},
               {OpJoinColumns, &joinColumns_},
               {OpSetFinalNumberOfColumns, &setNumberOfColumns_},
               {OpFinal, &final_}}} {}

void OperationPanels::addCommandsTo(Commands& commands) {
  commands.add("skipLineOperationTypeValueChanged",
               [this] { skipLine_.skipLineOperationTypeValueChanged(); });
  // Nothing depends on the type of a trim.
  commands.add("trimLineOperationTypeValueChanged", [] {});
  commands.add("trimColumnOperationTypeValueChanged", [] {});
  commands.add("reformatColumnOperationWindowReformatAsChanged",
               [this] { reformatColumn_.reformatColumnOperationWindowReformatAsChanged(); });
  commands.add("joinColumnsOperationWindowJoinButtonClicked",
               [this] { joinColumns_.joinColumnsOperationWindowJoinButtonClicked(); });
  // The button lights up and changes nothing: this is meant. Cancel undoes a join.
  commands.add("joinColumnsOperationWindowUnjoinButtonClicked", [] {});
  commands.add("rearrangeColumnsOperationWindowMoveUpButtonClicked",
               [this] { rearrangeColumns_.moveSelectedRowsUp(); });
  commands.add("rearrangeColumnsOperationWindowMoveDownButtonClicked",
               [this] { rearrangeColumns_.moveSelectedRowsDown(); });
}

OperationPanel* OperationPanels::panelForCode(std::int64_t code) {
  const auto found =
      std::find_if(byCode_.begin(), byCode_.end(), [code](const Entry& entry) { return entry.code == code; });
  return found == byCode_.end() ? nullptr : found->panel;
}

OperationPanel* OperationPanels::panelOf(const Control& control) {
  const auto found = std::find_if(byCode_.begin(), byCode_.end(), [&control](const Entry& entry) {
    return &entry.panel->window() == &control.window();
  });
  return found == byCode_.end() ? nullptr : found->panel;
}

}  // namespace quillet
