#include "ui/quillet_application.h"

#include <QApplication>
#include <QFileOpenEvent>
#include <QTimer>
#include <gtest/gtest.h>

#include "shell/application_fixture.h"

namespace quillet::ui {

namespace {

using quillet::testing::FoldersIn;
using quillet::testing::TemporaryFolder;

class QuilletApplicationTest : public ::testing::Test {
 protected:
  std::unique_ptr<QuilletApplication> newApplication() {
    return std::make_unique<QuilletApplication>(std::make_shared<FoldersIn>(home_.path()));
  }
  // A whole life: launched with the paths, then what happens, then the end of the event loop.
  void live(const std::vector<std::string>& paths, const std::function<void(QuilletApplication&)>& happens) {
    const auto quillet = newApplication();
    quillet->launch(paths);
    bool inTime = true;
    QTimer::singleShot(0, quillet.get(), [&] { happens(*quillet); });
    QTimer::singleShot(20'000, quillet.get(), [&] {
      inTime = false;
      QCoreApplication::exit(1);
    });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_TRUE(inTime);
  }
  // The list of the next start.
  std::vector<std::string> listedPaths() {
    const auto quillet = newApplication();
    quillet->launch({});
    return listedPaths(*quillet);
  }
  static std::vector<std::string> listedPaths(QuilletApplication& quillet) {
    std::vector<std::string> result;
    for (const auto& file : quillet.application().shared().files->all())
      result.push_back(file->filePathOrEmpty());
    return result;
  }
  QWidget& mainWindow(QuilletApplication& quillet) { return *quillet.windows().widget("window"); }

  TemporaryFolder home_;
  std::string a_ = home_.write("a.csv", "1\n");
  std::string b_ = home_.write("b.csv", "2\n");
};

TEST_F(QuilletApplicationTest, OpensItsOwnPathsBeforeTheWindowsComeUp) {
  live({a_, b_}, [this](QuilletApplication& quillet) {
    EXPECT_EQ(listedPaths(quillet), (std::vector<std::string>{a_, b_}));
    EXPECT_TRUE(mainWindow(quillet).isVisible());
    quillet.terminate();
  });
}

TEST_F(QuilletApplicationTest, FilesOfALaterStartGoToTheEndAndAreSelected) {
  live({a_}, [this](QuilletApplication& quillet) {
    quillet.receive({{b_}, {}});
    EXPECT_EQ(listedPaths(quillet), (std::vector<std::string>{a_, b_}));
    EXPECT_TRUE(quillet.application().fileSelection().rows() == IndexSet{1});
    quillet.terminate();
  });
}

TEST_F(QuilletApplicationTest, ALaterStartBringsTheMainWindowBack) {
  live({}, [this](QuilletApplication& quillet) {
    mainWindow(quillet).close();
    EXPECT_FALSE(mainWindow(quillet).isVisible());
    quillet.receive({});
    EXPECT_TRUE(mainWindow(quillet).isVisible());
    quillet.terminate();
  });
}

TEST_F(QuilletApplicationTest, TheTokenOfALaterStartIsUsedUp) {
  live({}, [](QuilletApplication& quillet) {
    quillet.receive({{}, "token"});
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    quillet.terminate();
  });
}

TEST_F(QuilletApplicationTest, AFileThatTheDesktopOpensIsThatOfALaterStart) {
  live({a_}, [this](QuilletApplication& quillet) {
    QFileOpenEvent event(QString::fromStdString(b_));
    QCoreApplication::sendEvent(qApp, &event);
    EXPECT_EQ(listedPaths(quillet), (std::vector<std::string>{a_, b_}));
    quillet.terminate();
  });
}

TEST_F(QuilletApplicationTest, ARequestToQuitStoresTheSession) {
  live({a_}, [](QuilletApplication&) { QCoreApplication::quit(); });
  EXPECT_EQ(listedPaths(), std::vector<std::string>{a_});
}

TEST_F(QuilletApplicationTest, ARequestToQuitKeepsWhichWindowsWereOpen) {
  live({}, [](QuilletApplication& quillet) {
    quillet.application().interface().commands().perform("previousJobsWindowMenuItemActionClicked");
    QCoreApplication::quit();
  });
  const auto quillet = newApplication();
  quillet->launch({});
  EXPECT_TRUE(quillet->windows().widget("previousJobsWindow")->isVisible());
  EXPECT_TRUE(mainWindow(*quillet).isVisible());
}

TEST_F(QuilletApplicationTest, ARequestToQuitIsObeyedWithASheetOpen) {
  live({}, [](QuilletApplication& quillet) {
    quillet.application().interface().commands().perform("clipboardDataWindowMenuItemClicked");
    quillet.application().interface().commands().perform("clipboardDataWindowSplitButtonPressed");
    QCoreApplication::quit();
  });
}

TEST_F(QuilletApplicationTest, TheEndOfTheSessionStoresWithoutQuitting) {
  live({a_}, [this](QuilletApplication& quillet) {
    // Which session ends is not looked at.
    int session = 0;
    emit qApp->commitDataRequest(reinterpret_cast<QSessionManager&>(session));
    EXPECT_EQ(UserDefaults(home_.path("defaults.json")).has("kLastOpenedWindows"), true);
    EXPECT_TRUE(mainWindow(quillet).isVisible());
    quillet.terminate();
  });
}

TEST_F(QuilletApplicationTest, WindowsComeBackWhereTheyStood) {
  live({}, [this](QuilletApplication& quillet) {
    mainWindow(quillet).resize(950, 610);
    QApplication::processEvents();
    quillet.terminate();
  });
  EXPECT_TRUE(home_.names().contains("windows.ini"));
  EXPECT_EQ(mainWindow(*newApplication()).size(), QSize(950, 610));
}

TEST_F(QuilletApplicationTest, TerminatingTwiceIsTerminatingOnce) {
  live({a_}, [](QuilletApplication& quillet) {
    quillet.terminate();
    quillet.application().inputFileList().addInputFiles({"/nowhere"}, 0, SelectFiles::No,
                                                        RestoreOperations::No);
    quillet.terminate();
  });
  EXPECT_EQ(listedPaths(), std::vector<std::string>{a_});
}

}  // namespace

}  // namespace quillet::ui
