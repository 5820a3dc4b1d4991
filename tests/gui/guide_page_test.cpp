// The guide is found where it is installed and where it is built.
#include "ui/guide_page.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QMenuBar>

#include "gui/every_window.h"

namespace quillet::ui {
namespace {

TEST(GuidePage, IsFoundFromTheFolderOfTheProgram) {
  const testing::TemporaryFolder home;
  const QString root = QFile::decodeName(home.path().c_str());
  const QString programs = root + QStringLiteral("/bin");
  QDir(root).mkpath(QStringLiteral("bin"));
  const auto make = [&](const char* path) {
    const QString whole = root + QLatin1Char('/') + QLatin1String(path);
    QDir().mkpath(QFileInfo(whole).path());
    QFile file(whole);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  };
  EXPECT_EQ(guidePage(programs), "");
  make("bin/share/doc/quillet/docs/index.md");
  EXPECT_EQ(guidePage(programs), home.path() + "/bin/share/doc/quillet/docs/index.md");
  make("share/doc/quillet/docs/index.md");
  EXPECT_EQ(guidePage(programs), home.path() + "/share/doc/quillet/docs/index.md");
  make("bin/share/doc/quillet/guide/index.html");
  EXPECT_EQ(guidePage(programs), home.path() + "/bin/share/doc/quillet/guide/index.html");
  make("share/doc/quillet/guide/index.html");
  EXPECT_EQ(guidePage(programs), home.path() + "/share/doc/quillet/guide/index.html");
}

class GuideItem : public testing::EveryWindowTest {};

TEST_F(GuideItem, FollowsTheOtherItemsOfHelpInEachWindow) {
  launch();
  for (const char* window : {"window", "clipboardDataWindow", "previousJobsWindow"}) {
    const QMenu* help = qobject_cast<QMainWindow*>(form(window))->menuBar()->actions().last()->menu();
    QStringList items;
    for (const QAction* action : help->actions()) items << action->text();
    EXPECT_EQ(items.join(QLatin1Char(';')).toStdString(), "Tutorials;Support;About Quillet;User Guide")
        << window;
  }
}

}  // namespace
}  // namespace quillet::ui
