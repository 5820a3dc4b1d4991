// A clipboard workbench without a grid, for one test: it remembers what it was told to perform.
#pragma once

#include "shell/clipboard_workbench.h"

namespace quillet::testing {

class ScriptedWorkbench final : public ClipboardWorkbench {
 public:
  void refreshDataFromClipboard() override { ++refreshes_; }
  void performClipboardDataOperation(const OperationRecord& operation) override {
    performed_.push_back(operation);
  }
  const OperationList& clipboardDataOperationsArray() const override { return performed_; }
  Content content() const override { return content_; }

  int refreshes() const { return refreshes_; }
  void setContent(const Content& content) { content_ = content; }

 private:
  int refreshes_ = 0;
  OperationList performed_;
  Content content_;
};

}  // namespace quillet::testing
