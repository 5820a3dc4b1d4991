// window_latency [MEGABYTES]: how long the windows do not answer, as the longest gap of a timer of 5 ms in
// the event loop: during a run over a file of so many megabytes (1,000) and what the user does meanwhile, and
// for the commands that work on the main thread. In milliseconds, on the offscreen platform.
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <string>

#include "bench/windows_at_work.h"
#include "operations/operation_codes.h"
#include "ui/table_view.h"

namespace quillet::bench {
namespace {

constexpr int kTick = 5;  // milliseconds

class GapMeter {
 public:
  GapMeter() {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(kTick);
    QObject::connect(&timer_, &QTimer::timeout, [this] { tick(); });
  }
  void start() {
    longest_ = 0;
    since_.start();
    timer_.start();
  }
  double stop() {
    tick();
    timer_.stop();
    return longest_;
  }
  void tick() {
    longest_ = std::max(longest_, static_cast<double>(since_.nsecsElapsed()) / 1e6);
    since_.start();
  }

 private:
  QTimer timer_;
  QElapsedTimer since_;
  double longest_ = 0;
};

void tell(const std::string& what, double longest) {
  std::printf("%-46s %10.1f%s\n", what.c_str(), longest, longest > 100 ? "  over 100" : "");
  std::fflush(stdout);
}

// The longest gap from now until nothing waits.
template <typename Action>
void tellGap(const std::string& what, Action action) {
  GapMeter meter;
  settle();
  meter.start();
  action();
  for (int i = 0; i < 4; ++i) QApplication::processEvents(QEventLoop::AllEvents, kTick);
  tell(what, meter.stop());
}

void writeRepeated(const std::string& path, const std::string& part, std::size_t bytes) {
  std::ofstream file(path, std::ios::binary);
  std::string block;
  while (block.size() < 1'000'000) block += part;
  for (std::size_t written = 0; written < bytes; written += block.size())
    file.write(block.data(), static_cast<std::streamsize>(block.size()));
}

OperationList severalOperations(const OperationList& plain) {
  OperationList list = plain;
  const OperationRecord added[] = {
      {{"Code", std::int64_t{OpSkipLine}}, {"IntArg1", std::int64_t{1}}, {"Arg1", u"never there"}},
      {{"Code", std::int64_t{OpTrimLine}}, {"IntArg1", std::int64_t{2}}},
      {{"Code", std::int64_t{OpReplaceLine}}, {"Arg1", u"Ada"}, {"Arg2", u"Grace"}},
      {{"Code", std::int64_t{OpTrimColumn}}, {"Arg1", u"1, 2"}, {"IntArg1", std::int64_t{2}}},
      {{"Code", std::int64_t{OpSetFinalNumberOfColumns}}, {"IntArg1", std::int64_t{6}}}};
  list.insert(list.end() - 1, std::begin(added), std::end(added));
  return list;
}

void measureRun(std::size_t megabytes) {
  WindowsAtWork at;
  AppDelegate& application = at.application();
  const std::string huge = at.home().path("huge.csv");
  writeRepeated(huge, "Ada,Lovelace,London,1815-12-10,  mathematics ,12.5\nbad \xFF byte,two\n",
                megabytes * 1'000'000);
  for (const char* folder : {"out", "tmp"}) std::filesystem::create_directories(at.home().path(folder));
  application.shared().defaults->setValue("OutputFolderBookmark", at.home().path("out"));
  application.shared().defaults->setValue("DontOpenOutputFolderAfterComplete", true);
  application.fileCommands().dropAtEnd({huge});
  application.inputFileList().setOperations(
      0, severalOperations(*application.shared().files->at(0)->operations));
  application.rightSide().updateRightSide();
  application.previewPanel().setPreviewType(2);
  settle();
  std::vector<std::string> more;
  for (int i = 0; i < 20; ++i) {
    more.push_back(at.home().path("more" + std::to_string(i) + ".csv"));
    writeRepeated(more.back(), "a,b,c\n1,2,3\n", 1'000'000);
  }
  const auto& runs = *application.jobController().runsGoingOn();
  auto* files = at.find<TableView>("window", "filesTableView");
  GapMeter meter;
  meter.start();
  at.perform("runButtonPressed");
  QElapsedTimer running;
  running.start();
  while (runs > 0 && running.elapsed() < 3'000) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  tell("run, the first 3 s of it", meter.stop());
  if (runs > 0)
    tellGap("  during it: a file is added", [&] { application.fileCommands().dropAtEnd({more[0]}); });
  if (runs > 0)
    tellGap("  during it: 19 files are added", [&] { application.fileCommands().dropAtEnd(more); });
  if (runs > 0) tellGap("  during it: the huge file is selected", [&] { files->selectRow(0); });
  for (const int type : {0, 1, 3, 2})
    if (runs > 0)
      tellGap("  during it: preview " + std::to_string(type),
              [&] { application.previewPanel().setPreviewType(type); });
  if (runs > 0)
    tellGap("  during it: an operation is added",
            [&] { application.operationEditor().addOperation(OpTrimLine, 0); });
  if (runs > 0) tellGap("  during it: a new preview", [&] { application.rightSide().updateRightSide(); });
  if (runs > 0)
    tellGap("  during it: the window of the clipboard",
            [&] { at.perform("clipboardDataWindowMenuItemClicked"); });
  if (runs > 0) tellGap("  during it: all files are selected", [&] { files->selectAll(); });
  meter.start();
  while (runs > 0) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  tell("run, the rest with its end", meter.stop());
  std::printf("%-46s %10.1f\n", "  megabytes a second",
              static_cast<double>(megabytes) * 1e3 / static_cast<double>(running.elapsed()));
}

void measureMainThread() {
  WindowsAtWork at;
  AppDelegate& application = at.application();
  const std::string line = at.home().path("line.csv");
  writeRepeated(line, "one line without an end ", 100'000'000);
  const std::string cells = at.home().path("cells.csv");
  writeRepeated(cells, "a,bc,", 100'000'000);
  tellGap("preview of a line of 100 MB", [&] { application.fileCommands().dropAtEnd({line}); });
  tellGap("  as text", [&] { application.previewPanel().setPreviewType(0); });
  tellGap("preview of a line of 40,000,000 cells", [&] { application.fileCommands().dropAtEnd({cells}); });
  std::vector<std::string> paths;
  for (int i = 0; i < 10'000; ++i) {
    paths.push_back(at.home().path("file" + std::to_string(i) + ".csv"));
    std::ofstream(paths.back()) << "a,b\n1,2\n";
  }
  tellGap("10,000 files are added", [&] { application.fileCommands().dropAtEnd(paths); });
  QApplication::clipboard()->setText(QStringLiteral("123456789\n").repeated(10'000'000));
  at.perform("clipboardDataWindowMenuItemClicked");
  tellGap("Refresh of 100,000,000 characters",
          [&] { at.perform("clipboardDataWindowRefreshNowButtonPressed"); });
  tellGap("Split of them", [&] {
    application.clipboard().performClipboardDataOperation(
        {{"Code", std::int64_t{102}}, {"Arg1", u"\n"}, {"Arg2", u","}});
  });
}

}  // namespace
}  // namespace quillet::bench

int main(int argc, char** argv) {
  quillet::bench::withWindows(argc, argv, [&] {
    std::printf("%-46s %10s\n", "longest gap, milliseconds", "");
    quillet::bench::measureRun(argc > 1 ? std::stoul(argv[1]) : 1'000);
    quillet::bench::measureMainThread();
  });
}
