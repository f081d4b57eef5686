#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/installer.h"

namespace pavoline {

using testing::Installer;

TEST(Startup, EndsAtOnceWithoutTheImageTool) {
  Installer w;
  w.files.drop("X:\\Pavoline\\Bin\\wimlib-imagex");
  w.start();
  EXPECT_EQ(w.count("S20"), 1);
  EXPECT_EQ(w.program->exitCode(), 4);
  EXPECT_TRUE(w.processes.ran.empty());
}

TEST(Startup, ChoosesTheToolsByTheMachine) {
  for (const auto& [sysWow, is64, arch] :
       {std::tuple{true, false, "x64"}, {false, true, "x64"}, {false, false, "x86"}}) {
    Installer w;
    w.files.put("X:\\Pavoline\\Bin\\wimlib-imagex\\x86\\wimlib-imagex.exe");
    if (!sysWow) w.files.drop("C:\\Windows\\SysWOW64");
    w.environment.is64Bit = is64;
    EXPECT_EQ(w.start().paths.imageToolArch, arch);
  }
}

TEST(Startup, GivesNewSystemsTheFolderAndTheLibraryTheyLack) {
  for (const auto& [version, folder, copied] : {std::tuple{"10.0.20265.1", false, true},
                                                {"10.0.20266.1", true, true},
                                                {"6.1.7601.1", false, false},
                                                {"", false, false}}) {
    Installer w;
    w.files.version("C:\\Windows\\System32\\kernel32.dll", version);
    w.files.put("X:\\Pavoline\\coml2.dll", "new");
    w.start();
    EXPECT_EQ(w.files.exists("C:\\Windows\\SystemTemp"), folder) << version;
    EXPECT_EQ(w.files.exists("C:\\Windows\\SysWOW64\\coml2.dll"), copied) << version;
  }
}

TEST(Startup, FillsTheSourceBoxesListForAPerson) {
  for (const bool unattended : {false, true}) {
    Installer w;
    w.files.sized("D:\\wim\\big.wim", 5ull << 30);
    w.start(unattended ? std::vector<std::string>{"/install"} : std::vector<std::string>{});
    EXPECT_EQ(w.form.combo1.items().size(), unattended ? 0u : 1u);
    EXPECT_TRUE(w.dialogs.shownForms.empty());
    EXPECT_EQ(w.form.combo1.text(), "") << "nothing is chosen";
    EXPECT_EQ(w.form.defaultButton, nullptr) << "Enter starts nothing";
    EXPECT_EQ(w.form.status.text(), "S1");
  }
}

}  // namespace pavoline
