#include "shell/bookmarks.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quillet {
namespace {

TEST(Bookmarks, APathComesBack) {
  for (const char* path : {"/", "/a b/é", "/a%20b", "/\xFF\xFE", "/a#b?c"}) {
    const auto bookmark = bookmarkFromPath(path);
    ASSERT_TRUE(bookmark) << path;
    EXPECT_EQ(pathFromBookmark(nlohmann::json(*bookmark)), path);
  }
}

TEST(Bookmarks, AnAbsolutePathStandsForItself) {
  EXPECT_EQ(pathFromBookmark(nlohmann::json("/a%20b")), "/a%20b");
}

TEST(Bookmarks, NothingIsNoBookmark) {
  EXPECT_FALSE(bookmarkFromPath("relative"));
  EXPECT_FALSE(bookmarkFromPath(""));
  for (const char* value :
       {"null", "3", "[]", "{}", "\"\"", "\"a\"", "\"http://a/b\"", "\"file:a\"", "\"file:///%\""})
    EXPECT_FALSE(pathFromBookmark(nlohmann::json::parse(value))) << value;
}

}  // namespace
}  // namespace quillet
