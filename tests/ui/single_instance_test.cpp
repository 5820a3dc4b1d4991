#include "ui/single_instance.h"

#include <QLocalSocket>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

#include "support/log_catcher.h"
#include "support/temporary_folder.h"
#include "ui/event_loop.h"

namespace quillet::ui {

namespace {

using Role = SingleInstance::Role;
using quillet::testing::LogCatcher;
using quillet::testing::runEventLoopUntil;
using quillet::testing::TemporaryFolder;

QString qPath(const TemporaryFolder& folder) {
  return QString::fromStdString(folder.path());
}

// A start in another thread, as the process of the first one has to go on with its event loop.
class LaterStart {
 public:
  LaterStart(const TemporaryFolder& folder, StartRequest request)
      : thread_([this, path = qPath(folder), request = std::move(request)] {
          SingleInstance instance(path);
          role_ = instance.start(request);
          ended_ = true;
        }) {}
  ~LaterStart() { thread_.join(); }

  Role role() {
    EXPECT_TRUE(runEventLoopUntil([this] { return ended_.load(); }));
    return role_;
  }

 private:
  std::atomic<bool> ended_ = false;
  Role role_ = Role::First;
  std::thread thread_;
};

class SingleInstanceTest : public ::testing::Test {
 protected:
  void listen() {
    ASSERT_EQ(first_.start({}), Role::First);
    server_ = first_.listen([this](const StartRequest& request) { received_.push_back(request); });
    ASSERT_TRUE(server_);
  }
  // What is sent as it is, and what comes back within the time.
  QByteArray answerTo(const QByteArray& bytes, int patience) {
    QLocalSocket socket;
    socket.connectToServer(first_.socketPath());
    socket.write(bytes);
    runEventLoopUntil([&socket] { return socket.canReadLine(); }, patience);
    return socket.readAll();
  }

  TemporaryFolder folder_;
  SingleInstance first_{qPath(folder_)};
  std::unique_ptr<QLocalServer> server_;
  std::vector<StartRequest> received_;
};

TEST_F(SingleInstanceTest, LaterStartHandsOverItsFilesAndItsToken) {
  listen();
  LaterStart later(folder_, {{"/a/b.csv", "/Übersicht 1.txt"}, "token-7"});
  EXPECT_EQ(later.role(), Role::HandedOver);
  ASSERT_EQ(received_.size(), 1U);
  EXPECT_EQ(received_[0].paths, (std::vector<std::string>{"/a/b.csv", "/Übersicht 1.txt"}));
  EXPECT_EQ(received_[0].activationToken, "token-7");
}

TEST_F(SingleInstanceTest, LaterStartWithoutFilesIsToldToo) {
  listen();
  LaterStart later(folder_, {});
  EXPECT_EQ(later.role(), Role::HandedOver);
  ASSERT_EQ(received_.size(), 1U);
  EXPECT_TRUE(received_[0].paths.empty());
}

TEST_F(SingleInstanceTest, ManyFilesArriveWhole) {
  listen();
  StartRequest request;
  for (int i = 0; i < 20'000; ++i)
    request.paths.push_back("/a folder with a long name/and another/file " + std::to_string(i));
  LaterStart later(folder_, request);
  EXPECT_EQ(later.role(), Role::HandedOver);
  ASSERT_EQ(received_.size(), 1U);
  EXPECT_EQ(received_[0].paths, request.paths);
}

TEST_F(SingleInstanceTest, SeveralLaterStartsAreServed) {
  listen();
  LaterStart one(folder_, {{"/1"}, {}});
  LaterStart two(folder_, {{"/2"}, {}});
  EXPECT_EQ(one.role(), Role::HandedOver);
  EXPECT_EQ(two.role(), Role::HandedOver);
  EXPECT_EQ(received_.size(), 2U);
}

TEST_F(SingleInstanceTest, SocketAndLockAreForTheUserAlone) {
  listen();
  for (const char* name : {"org.quillet.Quillet.socket", "org.quillet.Quillet.lock"}) {
    struct stat status {};
    ASSERT_EQ(::lstat(folder_.path(name).c_str(), &status), 0) << name;
    EXPECT_EQ(status.st_mode & 077U, 0U) << name;
  }
}

TEST_F(SingleInstanceTest, StaleSocketIsRemoved) {
  const std::string path = folder_.path("org.quillet.Quillet.socket");
  const int left = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(left, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ::close(left);
  ASSERT_TRUE(folder_.names().contains("org.quillet.Quillet.socket"));
  listen();
  LaterStart later(folder_, {{"/1"}, {}});
  EXPECT_EQ(later.role(), Role::HandedOver);
}

TEST_F(SingleInstanceTest, NextStartIsAFirstOneWhenTheFirstHasEnded) {
  {
    SingleInstance before(qPath(folder_));
    ASSERT_EQ(before.start({}), Role::First);
    const auto server = before.listen([](const StartRequest&) {});
  }
  listen();
}

TEST_F(SingleInstanceTest, StartWaitsForOneThatDoesNotListenYet) {
  ASSERT_EQ(first_.start({}), Role::First);
  LaterStart later(folder_, {{"/1"}, {}});
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  server_ = first_.listen([this](const StartRequest& request) { received_.push_back(request); });
  EXPECT_EQ(later.role(), Role::HandedOver);
  EXPECT_EQ(received_.size(), 1U);
}

TEST_F(SingleInstanceTest, StartGivesUpAfterTwoSecondsWithoutAnAnswer) {
  listen();
  SingleInstance later(qPath(folder_));
  const auto began = std::chrono::steady_clock::now();
  EXPECT_EQ(later.start({{"/1"}, {}}), Role::Unanswered);  // the event loop stands still meanwhile
  const auto waited = std::chrono::steady_clock::now() - began;
  EXPECT_GE(waited, std::chrono::milliseconds(1'900));
  EXPECT_LT(waited, std::chrono::milliseconds(6'000));
}

TEST_F(SingleInstanceTest, StartGivesUpWhenNobodyListens) {
  ASSERT_EQ(first_.start({}), Role::First);
  EXPECT_EQ(SingleInstance(qPath(folder_)).start({}, 200), Role::Unanswered);
}

TEST_F(SingleInstanceTest, OneOfManyStartsAtOnceIsTheFirst) {
  constexpr int kStarts = 8;
  std::atomic<int> firsts = 0;
  std::atomic<int> ended = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kStarts; ++i)
    threads.emplace_back([&] {
      SingleInstance instance(qPath(folder_));
      if (instance.start({}, 300) == Role::First) ++firsts;
      ++ended;
      while (ended < kStarts) std::this_thread::yield();
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(firsts, 1);
}

TEST_F(SingleInstanceTest, WithoutAFolderEveryStartIsAFirstOneAndSaysSo) {
  const QString nowhere = QString::fromStdString(folder_.path("missing"));
  SingleInstance one(nowhere);
  SingleInstance two(nowhere);
  EXPECT_EQ(one.start({}), Role::First);
  EXPECT_EQ(two.start({}), Role::First);
  const LogCatcher log;
  EXPECT_FALSE(two.listen([](const StartRequest&) {}));
  EXPECT_EQ(log.lines.size(), 1U);
}

TEST_F(SingleInstanceTest, MessageNeedsNoLineEndAndMayComeInParts) {
  listen();
  EXPECT_NE(answerTo("{\"files\":[\"/a\"],\"token\":\"t\"}", 5'000), "");
  ASSERT_EQ(received_.size(), 1U);
  EXPECT_EQ(received_[0].paths, std::vector<std::string>{"/a"});
  QLocalSocket socket;
  socket.connectToServer(first_.socketPath());
  for (const char* part : {"{\"files\":[\"/b\"", ",\"/}\"", "],\"token\":\"\"}"}) {
    socket.write(part);
    socket.flush();
    runEventLoopUntil([] { return false; }, 50);
  }
  EXPECT_TRUE(runEventLoopUntil([this] { return received_.size() == 2; }));
  EXPECT_EQ(received_[1].paths, (std::vector<std::string>{"/b", "/}"}));
}

TEST_F(SingleInstanceTest, WhatIsNoMessageIsNotAnswered) {
  listen();
  for (const char* bytes : {"", "[]", "{\"files\":", "{]}", "\xff\xfe}"})
    EXPECT_EQ(answerTo(bytes, 100), "") << bytes;
  EXPECT_TRUE(received_.empty());
  LaterStart later(folder_, {});
  EXPECT_EQ(later.role(), Role::HandedOver);
}

TEST(StartRequestMessage, HoldsFilesAndToken) {
  EXPECT_EQ(messageOfRequest({{"/a b", "/ü"}, "t"}).toStdString(),
            "{\"files\":[\"/a b\",\"/ü\"],\"token\":\"t\"}\n");
}

TEST(StartRequestMessage, KeepsPathsOfAnyBytes) {
  const StartRequest request{{"/plain", "/\xff\x80 name", "/with \"quotes\" \\ and \n", "/100%25"}, {}};
  const auto back = requestOfMessage(messageOfRequest(request));
  ASSERT_TRUE(back);
  EXPECT_EQ(back->paths, request.paths);
}

TEST(StartRequestMessage, PassesOverWhatIsNoPath) {
  struct Case {
    const char* files;
    std::vector<std::string> paths;
  };
  const Case cases[] = {{"[]", {}},
                        {"\"/a\"", {}},
                        {"[1,null,{},\"\"]", {}},
                        {"[\"a\",\"./a\",\"https://host/a\"]", {}},
                        {"[\"/a\\u0000b\"]", {}},
                        {"[\"file:///a%20b\",\"/c\"]", {"/a b", "/c"}}};
  for (const Case& each : cases) {
    const auto request = requestOfMessage(QByteArray("{\"files\":") + each.files + "}");
    ASSERT_TRUE(request) << each.files;
    EXPECT_EQ(request->paths, each.paths) << each.files;
  }
}

}  // namespace

}  // namespace quillet::ui
