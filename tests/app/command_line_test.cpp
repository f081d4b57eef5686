#include "app/command_line.h"

#include <gtest/gtest.h>

#include "platform/text.h"
#include "support/fake_text.h"

namespace pavoline {

CommandLine Parse(std::vector<std::string> arguments) {
  testing::FakeTextServices text;
  arguments.insert(arguments.begin(), "X:\\Pavoline\\Pavoline.exe");
  return ParseCommandLine(arguments, text);
}

TEST(CommandLine, ReadsEverySwitchInAnyCase) {
  const auto line =
      Parse({"/SOURCE:D:\\Images\\Win10.wim", "/WimIndex: 2 ", "/INSTPART:d:", "/bootpart:auto",
             "/FormatInstPart", "/Install", "/slient", "/reboot", "/BootRepair"});
  const CommandLineOptions& options = line.options;
  EXPECT_EQ(options.sourcePath, "d:\\images\\win10.wim");
  EXPECT_EQ(options.wimIndex, 2);
  EXPECT_EQ(options.installPartition, "D:");
  EXPECT_EQ(options.bootPartition, "AUTO");
  EXPECT_TRUE(options.formatInstallPartition && options.install && options.silent);
  EXPECT_TRUE(options.reboot && options.bootRepair);
}

TEST(CommandLine, FindsSwitchesInsideArgumentsAndLetsTheLastWin) {
  EXPECT_TRUE(Parse({"x/installfoo"}).options.install);
  const auto none = Parse({"/silent", "/nonsense", "D:\\Win10.wim"}).options;
  EXPECT_FALSE(none.install || none.silent || none.formatInstallPartition);
  const auto line = Parse({"/source:A.wim", "/wimindex:3", "/source: b c.wim ", "/wimindex:x"});
  EXPECT_EQ(line.options.sourcePath, "b c.wim");
  EXPECT_EQ(line.options.wimIndex, 0);
  EXPECT_EQ(Parse({"/wimindex:70000"}).options.wimIndex, 0) << "beyond 16 bits";
  EXPECT_EQ(Parse({"/source:D:\\ÄPFEL.WIM"}).options.sourcePath, "d:\\äpfel.wim");
}

TEST(CommandLine, SettingsInItKeepTheirCaseAndTheirWholeArgument) {
  const auto line = Parse({"/NAME:Saal-%Serial%", "/ini: D:\\A b.ini ", "/answer:D:\\x/slient",
                           "/logdir:Z:\\x/install", "/Drivers:\\\\S\\/source:d", "/name:"});
  EXPECT_EQ(line.options.settingsFile, "D:\\A b.ini");
  EXPECT_EQ(line.options.logDir, "Z:\\x/install");
  EXPECT_EQ(line.options.driverFolder, "\\\\S\\/source:d");
  EXPECT_FALSE(line.options.install || line.options.silent);
  EXPECT_EQ(line.options.sourcePath + line.options.computerName, "");
  EXPECT_EQ(Parse({"/source:D:\\x/name:Y"}).options.sourcePath, "d:\\x/name:y");
  const auto words = SwitchWords();
  for (const std::string& word : words) {
    for (const std::string& other : words) EXPECT_EQ(Contains(word, other), word == other) << word;
  }
  testing::FakeTextServices text;
  for (const auto& [argument, recorded] : {std::pair{"/Name:PC", "/Name:PC"},
                                           {"/pw:geheim", "/pw..."},
                                           {"geheim", "..."},
                                           {"/silent", "/silent"},
                                           {"x/installfoo", "x/installfoo"}}) {
    EXPECT_EQ(RecordedArgument(argument, text), recorded);
  }
}

TEST(CommandLine, TakesLocalesOfMoreThanThreeDigits) {
  EXPECT_EQ(Parse({"/lng:2052"}).locale, 2052u);
  EXPECT_EQ(Parse({"/lng:1031x"}).locale, 1031u);
  for (const char* refused : {"/lng:99", "/lng:999", "/lng:abc", "/lng:", "/lng:-1033"}) {
    EXPECT_FALSE(Parse({refused}).locale) << refused;
  }
}

}  // namespace pavoline
