#include "postinstall/boot_configuration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "postinstall/boot_stores.h"
#include "support/installer.h"

namespace pavoline::testing {

using namespace ::testing;

const BootJob kJob{"S:", "E:", false, "fr-FR"};
const BootJob kRepair{"S:", "", true, "fr-FR"};

PartitionEntry Row(const std::string& drive) { return {"1:1\t" + drive + "\t10.00GB"}; }

TEST(CallBootMbr, SpeaksTheProgramsLanguageOrEnglish) {
  InstallShop w;
  for (const auto& [locale, name] : {std::pair{1041u, "ja-JP"}, {1031u, "en-US"}}) {
    w.session.language = locale;
    CallBootMbr(w.session, {"S:", "E:", false, ""}, 10.0f);
    EXPECT_EQ(EditionLanguage(w.session), name);
  }
}

struct RepairShop : InstallShop {
  RepairShop() {
    for (const char* drive : {"D:", "E:", "X:"}) files.folder(drive + std::string("\\Windows"));
    for (const auto& store : {BiosStore("S:"), UefiStore("S:")}) files.put(store, "old");
    session.partitions = {Row("D:"), Row("S:"), {"short line"}, Row("E:"), Row("X:"), Row("")};
  }
  std::string stores() {  // for BIOS and UEFI, and the number of all files
    return files.text(BiosStore("S:")) + " " + files.text(UefiStore("S:")) + " " +
           std::to_string(files.below("S:").size());
  }
};

TEST(CallBootMbr, RepairsEverySystemFromTheLastRowToTheFirst) {
  RepairShop w;
  w.time.after(50, [&] { EXPECT_FALSE(w.files.exists(BiosStore("S:"))) << "made anew"; });
  EXPECT_TRUE(CallBootMbr(w.session, kRepair, 10.0f));
  EXPECT_THAT(w.commands(), ElementsAre("bcdboot.exe E:\\Windows /s S: /f bios /l fr-FR",
                                        "bcdboot.exe E:\\Windows /s S: /f uefi /l fr-FR",
                                        "bcdboot.exe D:\\Windows /s S: /f bios /l fr-FR",
                                        "bcdboot.exe D:\\Windows /s S: /f uefi /l fr-FR",
                                        "bootsect.exe /nt60 S: /mbr"));
  EXPECT_EQ(w.stores(), "new new 2");
}

TEST(CallBootMbr, PutsAStoreBackThatNothingHasReplaced) {
  for (const auto& [fails, stores] :
       {std::pair{"/f uefi", "new old 2"}, {"bcdboot.exe", "old old 2"}}) {
    RepairShop w;
    w.processes.onStart(fails, [](ToolRun& run) { run.exits(1); });
    EXPECT_EQ(CallBootMbr(w.session, kRepair, 10.0f), stores == std::string("new old 2"));
    EXPECT_EQ(w.stores(), stores);
  }
  const auto keeps = [](RepairShop& w) {
    EXPECT_FALSE(CallBootMbr(w.session, kRepair, 10.0f));
    EXPECT_EQ(w.stores(), "old old 2");
    EXPECT_FALSE(w.processes.ranLike("bcdboot") || AnythingToRepair(w.session));
  };
  RepairShop noSystem, noTool;
  noSystem.session.partitions = {Row("X:")};
  keeps(noSystem);
  for (const std::string& folder : {noTool.kBootTools, std::string("C:\\Windows\\System32\\")}) {
    noTool.files.drop(folder + "bcdboot.exe");
  }
  keeps(noTool);
}

TEST(CallBootMbr, TakesTheSystemsToolsWhereItsOwnAreMissing) {
  InstallShop w;
  w.applied();
  w.files.drop("X:\\Pavoline\\Bin\\Boot");
  EXPECT_TRUE(CallBootMbr(w.session, kJob, 10.0f) && BootToolsPresent(w.session));
  for (const std::string& line : w.commands()) {
    EXPECT_THAT(line, MatchesRegex("C:.Windows.System32.(bcdboot|bootsect).exe .*"));
  }
}

TEST(CallBootMbr, ChoosesTheBootSectorByTheNewestEvidence) {
  using Case = std::tuple<float, const char*, const char*, const char*>;
  for (const auto& [version, onD, onE, loader] :
       {Case{6.1f, "5.1.2600.0", "5.1.2600.0", "/nt60"}, Case{0, "", "", "/nt52"},
        Case{5.1f, "5.2.3790.0", "", "/nt52"}, Case{0, "5", "x", "/nt52"},
        Case{5.1f, "6.1.7601.0", "5.1.2600.0", "/nt60"},
        Case{0, "5.1.2600.0", "10.0.1.2", "/nt60"}}) {
    InstallShop w;
    w.files.version("D:\\Windows\\system32\\kernel32.dll", onD);
    w.files.version("E:\\Windows\\system32\\kernel32.dll", onE);
    w.session.partitions = {Row("D:"), Row("E:")};
    CallBootMbr(w.session, kJob, version);
    EXPECT_EQ(w.commands().back(), std::string("bootsect.exe ") + loader + " S: /mbr")
        << version << " " << onD << " " << onE;
  }
}

}  // namespace pavoline::testing
