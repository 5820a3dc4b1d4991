// The panels of the operations on raw text and on lines.
#pragma once

#include "shell/panels/operation_panel.h"
#include "shell/panels/text_controls.h"

namespace quillet {

class ReplaceCharacterPanel final : public OperationPanel {
 public:
  explicit ReplaceCharacterPanel(UserInterface& interface);
  Opens fill(const OperationRecord& record) override;
  void write(OperationRecord& record) const override;
  OperationRecord makeRecord(std::int64_t code) const override;

 private:
  void writeControls(OperationRecord& record) const;

  PopUpButton type_;
  TextField what_;
  TextField with_;
};

class SkipLinePanel final : public OperationPanel {
 public:
  explicit SkipLinePanel(UserInterface& interface);
  Opens fill(const OperationRecord& record) override;
  void write(OperationRecord& record) const override;

  void skipLineOperationTypeValueChanged();

 private:
  PopUpButton skipIf_;
  TextField text_;
  CheckBox caseSensitive_;
};

class TrimLinePanel final : public OperationPanel {
 public:
  explicit TrimLinePanel(UserInterface& interface);
  Opens fill(const OperationRecord& record) override;
  void write(OperationRecord& record) const override;

 private:
  TrimControls trim_;
};

class ReplaceLinePanel final : public OperationPanel {
 public:
  explicit ReplaceLinePanel(UserInterface& interface);
  Opens fill(const OperationRecord& record) override;
  void write(OperationRecord& record) const override;

 private:
  ReplaceControls replace_;
};

class JoinLinesPanel final : public OperationPanel {
 public:
  explicit JoinLinesPanel(UserInterface& interface);
  void prepareForAdding(std::int64_t code) override;
  Opens fill(const OperationRecord& record) override;
  void write(OperationRecord& record) const override;

 private:
  TextField numberToJoin_;
  TextField separator_;
};

}  // namespace quillet
