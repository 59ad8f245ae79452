// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "files/raw_file.h"

namespace tarvolt {
namespace {

struct Result {
  int status = -1;
  std::string output;  ///< standard output, and behind it standard error
};

/// A folder of its own with data files, and the program run on them.
class Tvd : public testing::Test {
 protected:
  Tvd() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tvd_test_XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
  }
  ~Tvd() override { std::filesystem::remove_all(folder_); }

  std::string Write(const std::string& name, const RawFile& raw) {
    std::ofstream file(folder_ / name, std::ios::binary);
    file << raw.Bytes();
    return "'" + (folder_ / name).string() + "'";
  }

  Result Run(const std::string& arguments) {
    Result result;
    const std::string command = TARVOLT_PROGRAM_FOLDER "/tvd " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> piece;
    while (const std::size_t read = fread(piece.data(), 1, piece.size(), pipe))
      result.output.append(piece.data(), read);
    result.status = WEXITSTATUS(pclose(pipe));
    return result;
  }

  static RawFile Samples() {
    RawFile raw;
    raw.Front(40180.5, 40180.75, 2,
              Block("caf\xE9 notes", {"Logged Using UT", "CHL0Power, \"total\"", "CHO0-3",
                                      "MetaData_A\xC8"
                                      "b",
                                      "LBL^|^1\xFE"
                                      "2\xFE"
                                      "event\xFE"}));
    raw.Add(40180.5).Add(0.1).Add(1e21);
    raw.Add(40180.625).Add(-0.0000001).Add(std::nan(""));
    raw.Add(40180.75).Add(1.0 / 3).Add(2.0);
    return raw.Text("torn");
  }

  std::filesystem::path folder_;
};

TEST_F(Tvd, DumpsEveryDigit) {
  const std::string file = Write("a file.tvd", Samples());
  const Result csv = Run("dump --csv " + file);
  EXPECT_EQ(csv.status, 0);
  EXPECT_EQ(csv.output,
            "index,stamp,date,\"Power, \"\"total\"\"\",CH 2\n"
            "0,40180.5,2010-01-02 12:00:00.000,0.1,1E+21\n"
            "1,40180.625,2010-01-02 15:00:00.000,-1E-07,nan\n"
            "2,40180.75,2010-01-02 18:00:00.000,0.3333333333333333,2\n");
  const Result part = Run("dump --from 1 --to 1 " + file);
  EXPECT_EQ(part.output,
            "index\tstamp\tdate\tPower, \"total\"\tCH 2\n1\t40180.625\t2010-01-02 15:00:00.000\t-1E-07\tnan\n");
}

TEST_F(Tvd, TellsWhatAFileSaysOfItself) {
  const std::string file = Write("a.tvd", Samples());
  const std::string text = Run("info " + file).output;
  for (const char* words : {"Samples:        3", "Author:         A. Observer\n", "Time base:      UT\n",
                            "Channel 1:      Power, \"total\"  offset -3", "A = b", "caf\xC3\xA9 notes",
                            "sample 2, channel 1: event", "2010-01-02 12:00:00.000  (40180.5)"}) {
    EXPECT_NE(text.find(words), std::string::npos) << words << "\n" << text;
  }
  const std::string json = Run("info --json " + file).output;
  for (const char* words : {"\"samples\": 3", "\"notes\": \"caf\xC3\xA9 notes\"", "\"usingUT\": true",
                            "\"label\": \"Power, \\\"total\\\"\"", "\"stamp\": 40180.75", "\"index\": 2"}) {
    EXPECT_NE(json.find(words), std::string::npos) << words << "\n" << json;
  }
}

TEST_F(Tvd, EvaluatesEquations) {
  EXPECT_EQ(Run("eval '2x + Y mod 3' --var X=1.25 --var y=7").output, "3.5\n");
  EXPECT_EQ(Run("eval --degrees 'sin(90)'").output, "1\n");
  EXPECT_EQ(Run("eval -- -x --var x=1").status, 2) << "behind -- there are no options";
  EXPECT_EQ(Run("eval --var x=-1e3 -- -x").output, "1000\n");
  EXPECT_EQ(Run("eval 1/3").output, "0.3333333333333333\n");
  for (const char* variable : {"x", "=1", "x=", "x=1e400", "x=1,5", "x=nan"}) {
    EXPECT_EQ(Run(std::string("eval 1 --var ") + variable).status, 2) << variable;
  }
}

TEST_F(Tvd, ComplainsInOneLine) {
  struct Case {
    std::string arguments;
    int status;
    const char* words;
  };
  const Case cases[] = {
      {"info " + (folder_ / "none.tvd").string(), 1, "cannot be opened"},
      {"info " + folder_.string(), 1, "cannot be opened"},
      {"dump " + Write("short.tvd", RawFile().Text("short")), 1, "not a data file"},
      {"info " + Write("bad.tvd", RawFile().Front(1, 2, 10, "")), 1, "1 to 9 channels"},
      {"dump " + Write("empty.tvd", RawFile().Front(1, 2, 1, "")), 1, "holds 0 samples"},
      {"dump --from 3 " + Write("three.tvd", Samples()), 1, "none from 3 on"},
      {"eval '1+'", 1, "Invalid Equation (error 1103)"},
      {"eval 'foo(1)'", 1, "Undefined Function: foo() (error 1101)"},
      {"dump --from 2 --to 1 " + Write("three.tvd", Samples()), 2, "--to lies before --from"},
  };
  for (const Case& c : cases) {
    const Result result = Run(c.arguments);
    EXPECT_EQ(result.status, c.status) << c.arguments;
    EXPECT_NE(result.output.find(c.words), std::string::npos) << result.output;
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 1) << result.output;
  }
  EXPECT_EQ(Run("").status, 2);
  EXPECT_EQ(Run("dump --from -1 x").status, 2);
  EXPECT_EQ(Run("--version").status, 0);
}

TEST_F(Tvd, PlotDrawsAPictureWithoutADisplay) {
  RawFile raw;
  raw.Front(40180.5, 40180.75, 2, "");
  for (int i = 0; i < 500; ++i) raw.Add(40180.5 + i / 2000.0).Add(std::sin(i * 0.1)).Add(1.0 * i);
  const std::string file = Write("a.tvd", raw);
  const auto picture = [this](const char* name) { return (folder_ / name).string(); };
  EXPECT_EQ(Run("plot " + file + " --size 640x300 -o " + picture("a.png")).status, 0);
  std::ifstream png(picture("a.png"), std::ios::binary);
  std::array<unsigned char, 24> head{};
  png.read(reinterpret_cast<char*>(head.data()), head.size());
  EXPECT_EQ(head[18] * 256 + head[19], 640);
  EXPECT_EQ(head[22] * 256 + head[23], 300);
  EXPECT_EQ(Run("plot " + file + " --from 13:00:00 --to 15:00:00 --channels 2 -o " + picture("a.svg")).status, 0);
  EXPECT_GT(std::filesystem::file_size(picture("a.svg")), 1000u);
  EXPECT_EQ(Run("plot " + file + " -o " + picture("a.pdf")).status, 0);
  for (const char* wrong :
       {"--size 5", "--size 0x10", "--channels 3", "--channels 2-1", "--from noon", "--from 15:00:00 --to 13:00:00"}) {
    const Result result = Run("plot " + file + " " + wrong + " -o " + picture("b.png"));
    EXPECT_EQ(result.status, 2) << wrong;
    EXPECT_FALSE(result.output.empty()) << wrong;
    EXPECT_FALSE(std::filesystem::exists(picture("b.png"))) << wrong;
  }
  EXPECT_EQ(Run("plot " + file + " -o " + picture("a.gif")).status, 1);
  const Result missing = Run("plot " + picture("none.tvd"));
  EXPECT_EQ(missing.status, 1);
  EXPECT_NE(missing.output.find("Cannot Find the file: "), std::string::npos) << missing.output;
}

TEST_F(Tvd, AppliesEquationsIntoANewFile) {
  RawFile raw;
  raw.Front(40180.5, 40180.5 + 1198 / 86400.0, 2, Block("notes", {"Logged Using UT", "CHL0Power"}));
  for (int i = 0; i < 1200; ++i) raw.Add(40180.5 + i / 86400.0).Add(1.0 * i).Add(-2.5);
  const std::string file = Write("in.tvd", raw);
  const std::string out = "'" + (folder_ / "out.tvd").string() + "'";
  const Result done =
      Run("apply " + file + " --equation '1=X*2+1' --equation '3=Z1+Z2[-1]' --new-channels 1 -o " + out);
  EXPECT_EQ(done.status, 0) << done.output;
  EXPECT_EQ(done.output, "");
  const Result dump = Run("dump --csv --from 1198 " + out);
  EXPECT_EQ(dump.output,
            "index,stamp,date,Power,CH 2,EQ CH3\n"
            "1198,40180.513865740744,2010-01-02 12:19:58.000,2397,-2.5,2394.5\n"
            "1199,40180.513877314814,2010-01-02 12:19:59.000,2399,-2.5,2396.5\n");
  EXPECT_NE(Run("info " + out).output.find("CH: 3  Equation: Z1+Z2[-1]"), std::string::npos);
  EXPECT_EQ(Run("dump --csv --from 1199 " + file).output.find("2399"), std::string::npos);

  EXPECT_EQ(Run("apply " + file + " --equation '1=X' -o " + file).status, 2) << "never over what was measured";
  EXPECT_EQ(Run("apply " + file + " --equation '9=X' -o " + out).status, 2);
  EXPECT_EQ(Run("apply " + file + " --equation '3=X' -o " + out).status, 2) << "there is no third channel";
  EXPECT_EQ(Run("apply " + file + " --equation '3=X' --new-channels 7 -o " + out).status, 2);
  const std::string refused = "'" + (folder_ / "refused.tvd").string() + "'";
  const Result faulty = Run("apply " + file + " --equation '1=X;sqrt(X)' -o " + refused);
  EXPECT_EQ(faulty.status, 1);
  EXPECT_NE(faulty.output.find("channel 1, statement 2 \"sqrt(X)\": Undefined Function: sqrt()"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "refused.tvd"));
  EXPECT_EQ(Run("apply '" + (folder_ / "none").string() + "' --equation '1=X' -o " + out).status, 1);
  EXPECT_EQ(Run("apply " + file + " --equation '1=X' -o '" + (folder_ / "no" / "out.tvd").string() + "'").status, 1);
}

}  // namespace
}  // namespace tarvolt
