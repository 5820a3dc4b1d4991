// Whole jobs of random operations on random input, against the plain rule.
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "engine/reference_pass.h"
#include "support/random_source.h"

namespace quillet {
namespace {

using namespace testing;

const std::u16string kTexts[] = {u"",
                                 u",",
                                 u"a",
                                 u"ab",
                                 u"A",
                                 u"1",
                                 u"2",
                                 u" ",
                                 u"\t",
                                 u"\n",
                                 u"\"",
                                 u";",
                                 u"é",
                                 u"e\u0301",
                                 u"\u0301",
                                 u"ß",
                                 u"SS",
                                 u"\U0001F600",
                                 u"1, 2",
                                 u"2 - 3",
                                 u"3 -",
                                 u"2, 1",
                                 u"1 + 2, 3",
                                 u"3, 9, 1",
                                 u"9",
                                 u"-1",
                                 u"+5",
                                 u"[ab]+",
                                 u"(a)(b)?",
                                 u"$1x",
                                 u"[",
                                 u"^",
                                 u"x*",
                                 u"\\n\\t",
                                 u"a\\b",
                                 u"–",
                                 u"\u20AC",
                                 u"x",
                                 u"?",
                                 u"\u200D",
                                 u"\u1100",
                                 u"\u1161",
                                 u"0",
                                 u"2, 2, 4",
                                 u"1, 3 - 6, 8",
                                 u"\U0001F1E6",
                                 u"bca\U0001F600",
                                 u"K",
                                 u"\u212A",
                                 u"\u0915\u094D",
                                 u"\u0937",
                                 u"\u00A0",
                                 u"2, 4 -"};

const std::u16string kNumberTexts[] = {u"2", u"1x", u"", u" 3", u"abc", u"-2"};

OperationRecord::Value randomNumber(RandomSource& random, std::size_t below) {
  if (random.oneIn(12)) return random.pick(kNumberTexts);
  if (random.oneIn(30)) return std::int64_t{-1};
  return static_cast<std::int64_t>(random.below(below));
}

OperationRecord::Value randomText(RandomSource& random) {
  if (random.oneIn(25)) return static_cast<std::int64_t>(random.below(5));
  return random.pick(kTexts);
}

void maybeSet(RandomSource& random, OperationRecord& one, std::string_view key,
              OperationRecord::Value value) {
  if (!random.oneIn(8)) one.set(key, std::move(value));
}

OperationRecord randomOperation(RandomSource& random) {
  constexpr std::int64_t kCodes[] = {150, 201, 201, 202, 202, 203, 203, 251, 301, 301, 302,
                                     302, 303, 303, 351, 352, 353, 361, 101, 901, 0,   314};
  const std::int64_t code = random.pick(kCodes);
  OperationRecord one = record(code);
  const std::size_t mostInFirst = code == 251 || code == 351 || code == 361 ? 6 : 4;
  maybeSet(random, one, "IntArg1", randomNumber(random, mostInFirst));
  maybeSet(random, one, "IntArg2", randomNumber(random, code == 150 ? 4 : 7));
  maybeSet(random, one, "IntArg3", randomNumber(random, code == 303 ? 7 : 4));
  maybeSet(random, one, "IntArg4", randomNumber(random, 9));
  maybeSet(random, one, "Arg1", randomText(random));
  maybeSet(random, one, "Arg2", randomText(random));
  maybeSet(random, one, "Arg3", randomText(random));
  maybeSet(random, one, "Arg5", randomNumber(random, 5));
  if (code >= 301 && code <= 303 && !random.oneIn(4)) {
    const std::u16string columns[] = {u"1", u"2", u"1 - 3", u"2, 3", u"1, 9"};
    one.set("Arg1", random.pick(columns));
  }
  // A Skip Line that skips nearly all would hide the rest.
  if (code == 201 && random.oneIn(2)) one.set("IntArg2", std::int64_t{0});
  return one;
}

constexpr std::int64_t kEncodings[] = {4, 4, 4, 4, 12, 12, 30, 1, 7};

OperationList randomOperations(RandomSource& random) {
  constexpr std::int64_t kSplits[] = {49, 49, 49, 17, 17, 33, 1, 16, 48, 0};
  const std::u16string lineSeparators[] = {u"\n", u"\n", u"\n", u"\r\n", u"ab", u"", u"é", u"\u2028", u";"};
  const std::u16string columnSeparators[] = {u",", u",", u",", u"\t", u";", u"", u"||", u"é", u"\"", u"x"};
  OperationRecord first = record(OpInitial);
  maybeSet(random, first, "IntArg1", random.pick(kSplits));
  maybeSet(random, first, "IntArg2", random.pick(kEncodings));
  maybeSet(random, first, "Arg1", random.pick(lineSeparators));
  maybeSet(random, first, "Arg2", random.pick(columnSeparators));

  const std::u16string names[] = {u"one.txt", u"one.txt",  u"two.txt", u"three.txt",
                                  u"",        u"no/where", u"folder"};
  OperationRecord last = record(OpFinal);
  maybeSet(random, last, "IntArg1", randomNumber(random, 4));
  maybeSet(random, last, "IntArg2", random.pick(kEncodings));
  maybeSet(random, last, "IntArg3", randomNumber(random, 5));
  maybeSet(random, last, "Arg1", random.oneIn(4) ? randomText(random) : u"\n");
  maybeSet(random, last, "Arg2", random.oneIn(4) ? randomText(random) : u"\t");
  last.set("Arg4", random.oneIn(3) ? random.pick(names) : u"one.txt");

  OperationList list = {first};
  for (std::size_t i = random.below(6); i > 0; --i) list.push_back(randomOperation(random));
  list.push_back(last);
  if (random.oneIn(30)) list.resize(random.below(2));
  return list;
}

std::string randomBytes(RandomSource& random) {
  const std::string words[] = {"a",
                               "b",
                               "A",
                               "ab",
                               "1",
                               "2",
                               ",",
                               ",",
                               ",",
                               ",",
                               "\t",
                               "\"",
                               "\"",
                               "\n",
                               "\n",
                               "\n",
                               "\r\n",
                               " ",
                               " ",
                               ";",
                               "\n",
                               "é",
                               "e\u0301",
                               "\u0301",
                               "ß",
                               "€",
                               "\U0001F600",
                               "\U0001F468\u200D\U0001F469",
                               "\x80",
                               "\xE2"
                               "A",
                               "\xC3",
                               "\xFF",
                               "\x81",
                               "\xE9",
                               std::string(1, '\0'),
                               "2018-08-16",
                               "8/16/2018 20:13",
                               "20:13",
                               "-12.5",
                               "3abc",
                               "\u1100\u1161\u11A8",
                               "\u0915\u094D\u0937",
                               "\U0001F1E9\U0001F1EA",
                               "||",
                               "a\u034Fx",
                               "\u0915\u094Dx",
                               "\u2028",
                               "\uFEFF",
                               "–",
                               "\u212A",
                               "longer text of some words",
                               "\u00A0",
                               "\x93"
                               "q",
                               "\x7F",
                               "Aab"};
  std::string bytes;
  // Some inputs are plain, so that the fast ways have long runs.
  const std::size_t kinds = random.oneIn(3) ? 21 : std::size(words);
  for (std::size_t i = random.below(random.oneIn(5) ? 500 : 90); i > 0; --i)
    bytes += words[random.below(kinds)];
  if (random.oneIn(15)) {
    // A line beyond the limit, with what is of interest near it.
    const std::string fillers[] = {"x",
                                   "é",
                                   "xy,",
                                   "x\"y\"",
                                   "\xE2"
                                   "A1",
                                   "\U0001F600"};
    std::string longer;
    const std::string& filler = random.pick(fillers);
    const std::size_t wanted = 16384 + random.below(40) - 20 + (random.oneIn(3) ? 16384 : 0);
    while (toUtf16(longer).size() < wanted) {
      for (int i = 0; i < 64 && longer.size() < wanted * 2; ++i) longer += filler;
      if (longer.size() >= wanted * 4) break;
    }
    bytes.insert(random.oneIn(2) ? 0 : bytes.size(), longer);
  }
  return bytes;
}

std::string printed(const std::vector<JobLog::Entry>& log) {
  std::ostringstream out;
  for (const auto& [level, text] : log) out << "\n  " << level << " " << text;
  return out.str();
}

std::string printed(const OperationList& list) {
  std::ostringstream out;
  for (const auto& one : list) {
    out << "\n  ";
    for (const auto& [key, value] : one.items()) {
      out << key << "=";
      if (const auto* number = std::get_if<std::int64_t>(&value))
        out << *number << " ";
      else
        out << ::testing::PrintToString(toUtf8(std::get<std::u16string>(value))) << " ";
    }
  }
  return out.str();
}

std::string printed(const ReferenceJob& reference) {
  std::ostringstream out;
  for (const auto& file : reference.files) {
    out << "\nfile " << file.path << " of " << file.bytes.size() << " bytes "
        << ::testing::PrintToString(file.bytes.substr(0, 1500));
    if (file.operations) out << printed(*file.operations);
  }
  return out.str();
}

void compareStores(const PreviewStores::Content& content, const ReferenceJob& reference, bool isRun) {
  const PreviewStores::Content& expected = reference.preview;
  if (!isRun || !reference.hasManyRows) {
    EXPECT_EQ(content.inputRows, expected.inputRows);
    EXPECT_EQ(content.outputRows, expected.outputRows);
  }
  EXPECT_EQ(content.inputString, expected.inputString);
  EXPECT_EQ(content.inputLineSeparator, expected.inputLineSeparator);
  EXPECT_EQ(content.outputString, isRun ? expected.outputString.substr(0, 16'384) : expected.outputString);
}

class RandomJobs : public ::testing::Test {
 protected:
  void compareOneJob(RandomSource& random) {
    Job job;
    ReferenceJob reference;
    reference.outputFolder = job.outputFolder();
    prepare(random, job, reference);
    const bool isRun = !random.oneIn(4);
    const std::size_t selected = random.below(reference.files.size());
    if (isRun) {
      job.run();
      reference.run();
    } else {
      job.preview({static_cast<std::int64_t>(selected)});
      reference.previewOf(selected);
    }
    compareStores(job.stores(), reference, isRun);
    EXPECT_EQ(printed(job.logEntries()), printed(reference.log));
    compareFiles(job, reference);
    EXPECT_EQ(replacementFailures(job), reference.systemLog.size());
    if (HasFailure()) ADD_FAILURE() << (isRun ? "run" : "preview") << printed(reference);
  }

 private:
  static void prepare(RandomSource& random, Job& job, ReferenceJob& reference) {
    const std::u16string replacements[] = {u"?",  u"",           u"é",
                                           u"??", u"\U0001F600", u"a replacement that is long"};
    if (random.oneIn(2)) {
      reference.decodeReplacement = random.pick(replacements);
      reference.encodeReplacement = random.pick(replacements);
      job.surroundings.defaults->setValues({{"DecodeErrorReplacement", toUtf8(reference.decodeReplacement)},
                                            {"EncodeErrorReplacement", toUtf8(reference.encodeReplacement)}});
    }
    makeFolders(job.outputPath("folder"));
    reference.outputFolders.insert("folder");
    if (random.oneIn(3)) {
      reference.outputs["one.txt"] = "there before";
      job.folder().write("out/one.txt", "there before");
    }
    for (std::size_t i = 0, count = 1 + random.below(2); i < count; ++i) {
      ReferenceFile file;
      file.bytes = randomBytes(random);
      if (!random.oneIn(40)) file.operations = randomOperations(random);
      file.isThere = !random.oneIn(40);
      const std::string name = "file" + std::to_string(i) + ".csv";
      if (file.isThere) {
        file.path = job.addFile(name, file.bytes, file.operations);
      } else {
        file.path = job.folder().path("in/" + name);
        job.addEntry(file.path, file.operations);
      }
      reference.files.push_back(std::move(file));
    }
  }

  static void compareFiles(const Job& job, const ReferenceJob& reference) {
    std::map<std::string, std::string> outputs;
    for (const auto& entry : std::filesystem::directory_iterator(job.outputFolder()))
      if (entry.is_regular_file()) outputs[entry.path().filename()] = job.output(entry.path().filename());
    EXPECT_EQ(outputs, reference.outputs);
    EXPECT_EQ(job.surroundings.outputFiles->paths(), reference.outputPaths);
    for (std::size_t i = 0; i < reference.files.size(); ++i) {
      const auto columns = job.surroundings.files->at(i)->expectedColumnsInLine;
      const auto expected = reference.expectedColumns.find(i);
      ASSERT_EQ(columns.has_value(), expected != reference.expectedColumns.end());
      if (columns) {
        EXPECT_EQ(*columns, expected->second);
      }
    }
  }

  static std::size_t replacementFailures(const Job& job) {
    std::size_t count = 0;
    for (const auto& line : job.systemLog.lines)
      if (line.starts_with(u"Could not encode replacement string [")) ++count;
    return count;
  }
};

TEST_F(RandomJobs, DoWhatThePlainRuleDoes) {
  const std::uint64_t first = environmentNumber("QUILLET_TEST_FIRST", 0);
  for (std::uint64_t round = first; round < first + rounds(120) && !HasFailure(); ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    RandomSource random(round);
    compareOneJob(random);
  }
}

}  // namespace
}  // namespace quillet
