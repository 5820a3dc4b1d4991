#include "engine/pending_text.h"

#include <gtest/gtest.h>

#include "platform/composed_sequences.h"
#include "platform/unicode_text.h"
#include "support/random_source.h"
#include "support/temporary_folder.h"

namespace quillet {
namespace {

using testing::RandomSource;
using testing::TemporaryFolder;

struct Pieces {
  std::u16string whole;
  std::size_t count = 0;
  std::size_t longest = 0;
  bool cutsASequence = false;
};

// The pieces, and whether a composed sequence of the whole text was cut between two of them.
Pieces piecesOf(PendingText& pending) {
  Pieces pieces;
  std::vector<std::size_t> cuts;
  pending.forEachPiece([&](std::u16string_view piece) {
    EXPECT_FALSE(piece.empty());
    pieces.whole += piece;
    ++pieces.count;
    pieces.longest = std::max(pieces.longest, piece.size());
    cuts.push_back(pieces.whole.size());
  });
  std::size_t next = 0;
  for (std::size_t at = 0; at < pieces.whole.size(); at = composedSequenceEnd(pieces.whole, at)) {
    while (next < cuts.size() && cuts[next] < at) {
      pieces.cutsASequence = true;
      ++next;
    }
    if (next < cuts.size() && cuts[next] == at) ++next;
  }
  if (next < cuts.size() && cuts[next] < pieces.whole.size()) pieces.cutsASequence = true;
  return pieces;
}

TEST(PendingText, JoinsParts) {
  PendingText pending([] { return std::string("/nowhere"); });
  EXPECT_FALSE(pending.hasParts());
  EXPECT_TRUE(pending.isEmptyText());
  pending.addPart(u"", u"");
  EXPECT_TRUE(pending.hasParts());
  EXPECT_TRUE(pending.isEmptyText());
  pending.addPart(u"a", u"+");
  pending.addPart(u"b", u"+");
  EXPECT_FALSE(pending.isEmptyText());
  EXPECT_EQ(piecesOf(pending).whole, u"+a+b");
  EXPECT_EQ(piecesOf(pending).count, 1u);
  pending.clear();
  EXPECT_FALSE(pending.hasParts());
  EXPECT_EQ(piecesOf(pending).count, 0u);
  pending.addPart(u"c", u"+");
  EXPECT_EQ(piecesOf(pending).whole, u"c");
}

struct LargeCase {
  const char* what;
  std::u16string part, separator;
  std::size_t longestPiece;  // units; the text is far longer
};

const LargeCase kLarge[] = {
    {"plain", u"some plain text", u", ", 200'000},
    {"marks", u"e\u0301xq\u0301\u0308", u"", 200'000},
    {"a mark behind each separator", u"\u0301abc", u";", 200'000},
    {"pairs", u"\U0001F600", u"", 200'000},
    {"joined emoji", u"\U0001F468\u200D\U0001F469\u200D\U0001F467", u"", 200'000},
    {"flags", u"\U0001F1E9\U0001F1EA", u"", 200'000},
    {"conjuncts", u"\u0915\u094D\u0937\u0940", u"", 200'000},
    {"jamo", u"\u1100\u1161\u11A8", u"", 200'000},
};

TEST(PendingText, MovesToAFileAndLosesNothing) {
  for (const auto& [what, part, separator, longestPiece] : kLarge) {
    const TemporaryFolder folder;
    PendingText pending([&] { return folder.path(); });
    std::u16string expected;
    while (expected.size() < 1'200'000) {
      if (!expected.empty()) expected += separator;
      expected += part;
      pending.addPart(part, separator);
    }
    const Pieces pieces = piecesOf(pending);
    EXPECT_TRUE(pieces.whole == expected) << what;
    EXPECT_FALSE(pieces.cutsASequence) << what;
    EXPECT_LE(pieces.longest, longestPiece) << what;  // memory stays bounded
    EXPECT_TRUE(folder.names().empty());              // the file has no name
    pending.clear();
    pending.addPart(u"next", u"");
    EXPECT_EQ(piecesOf(pending).whole, u"next") << what;
  }
}

TEST(PendingText, StaysInMemoryWhereNoFileCanBeMade) {
  PendingText pending([] { return std::string("/nowhere"); });
  const std::u16string part(100'000, u'x');
  for (int i = 0; i < 25; ++i) pending.addPart(part, u"-");
  const Pieces pieces = piecesOf(pending);
  EXPECT_EQ(pieces.whole.size(), 2'500'024u);
  EXPECT_EQ(pieces.whole[100'000], u'-');
}

TEST(PendingText, NeverCutsASequence) {
  RandomSource random;
  const std::u16string parts[] = {u"a",          u"b",          u"\u0301",     u"\u200D", u"\U0001F600",
                                  u"\U0001F468", u"\U0001F1E9", u"\u0915",     u"\u094D", u"\u1100",
                                  u"\u1161",     u"漢",         u"\U0001F3FD", u"\u0E33", u"\u0600"};
  for (std::uint64_t round = 0; round < testing::rounds(2); ++round) {
    const TemporaryFolder folder;
    PendingText pending([&] { return folder.path(); });
    std::u16string expected;
    // Few kinds of parts at a time, so that some texts have no two plain units side by side.
    std::vector<std::u16string> chosen;
    for (std::size_t i = 2 + random.below(4); i > 0; --i) chosen.push_back(random.pick(parts));
    while (expected.size() < 1'100'000) {
      const auto part = random.text(chosen, 2'000);
      expected += part;
      pending.addPart(part, u"");
    }
    const Pieces pieces = piecesOf(pending);
    EXPECT_TRUE(pieces.whole == expected);
    EXPECT_FALSE(pieces.cutsASequence);
    EXPECT_GT(pieces.count, 1u);
  }
}

}  // namespace
}  // namespace quillet
