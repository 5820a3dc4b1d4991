#include "shell/file_selection.h"

#include "platform/folders.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

// The name as the path has it, whatever the entry says.
Table::Row shownRow(const InputFiles::Entry& file) {
  return {file ? toUtf16(lastPathComponent(file->filePathOrEmpty())) : std::u16string()};
}

}  // namespace

FileSelection::FileSelection(Window& window, const InputFiles& files)
    : files_(files),
      table_(
          window, "filesTableView",
          {[this] { return files_.count(); }, [this](std::size_t row) { return shownRow(files_.at(row)); }},
          {{"FileColumn0", {}}}, "filesTableViewDoubleClickOnRow") {}

void FileSelection::select(std::size_t row) {
  select(IndexSet{static_cast<std::int64_t>(row)});
}

std::optional<std::size_t> FileSelection::singleRow() const {
  if (rows().count() != 1) return std::nullopt;
  return static_cast<std::size_t>(rows().firstIndex());
}

InputFiles::Entry FileSelection::singleFile() const {
  const auto row = singleRow();
  return row ? files_.at(*row) : nullptr;
}

InputFiles::Entry FileSelection::firstFile() const {
  return rows().isEmpty() ? nullptr : files_.at(static_cast<std::size_t>(rows().firstIndex()));
}

}  // namespace quillet
