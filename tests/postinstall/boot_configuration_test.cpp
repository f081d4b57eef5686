#include "postinstall/boot_configuration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/engine_shop.h"

namespace pavoline::testing {

using ::testing::ElementsAre;

PartitionEntry Row(const std::string& drive) { return {"1:1\t" + drive + "\t10.00GB"}; }

TEST(CallBootMbr, WritesBootFilesForBothFirmwaresInTheThreadsLanguage) {
  for (const auto& [locale, name] : {std::pair{2052u, "zh-CN"},
                                     {1028u, "zh-TW"},
                                     {3076u, "zh-HK"},
                                     {1041u, "ja-JP"},
                                     {1042u, "ko-KR"},
                                     {1031u, "en-US"}}) {
    EngineShop w;
    w.applied("10.0.1.2");
    w.environment.thread = locale;
    CallBootMbr(w.session, 10.0f);
    const std::string language = name;
    EXPECT_THAT(w.commands(), ElementsAre("bcdboot.exe E:\\Windows /s S: /f bios /l " + language,
                                          "bcdboot.exe E:\\Windows /s S: /f uefi /l " + language,
                                          "bootsect.exe /nt60 S: /mbr"));
    EXPECT_EQ(EditionLanguage(w.session), language);
  }
}

TEST(CallBootMbr, RepairsEverySystemFromTheLastRowToTheFirst) {
  EngineShop w;
  for (const char* drive : {"D:", "E:", "X:"}) w.files.folder(drive + std::string("\\Windows"));
  for (const char* path : {"S:\\boot\\bcd", "S:\\EFI\\Microsoft\\Boot\\BCD"}) w.files.put(path);
  w.session.partitions = {Row("D:"), Row("S:"), {"short line"}, Row("E:"), Row("X:"), Row("")};
  w.session.fallbackLanguage = "fr-FR";
  w.session.bootRepairRequested = true;
  CallBootMbr(w.session, 10.0f);
  EXPECT_THAT(w.commands(), ElementsAre("bcdboot.exe E:\\Windows /s S: /f bios /l fr-FR",
                                        "bcdboot.exe E:\\Windows /s S: /f uefi /l fr-FR",
                                        "bcdboot.exe D:\\Windows /s S: /f bios /l fr-FR",
                                        "bcdboot.exe D:\\Windows /s S: /f uefi /l fr-FR",
                                        "bootsect.exe /nt60 S: /mbr"));
  EXPECT_TRUE(w.files.below("S:").empty());
}

TEST(CallBootMbr, ChoosesTheBootSectorByTheNewestEvidence) {
  using Case = std::tuple<float, const char*, const char*, const char*>;
  for (const auto& [version, onD, onE, loader] :
       {Case{6.1f, "5.1.2600.0", "5.1.2600.0", "/nt60"}, Case{0, "", "", "/nt52"},
        Case{5.1f, "5.2.3790.0", "", "/nt52"}, Case{0, "5", "x", "/nt52"},
        Case{5.1f, "6.1.7601.0", "5.1.2600.0", "/nt60"},
        Case{0, "5.1.2600.0", "10.0.1.2", "/nt60"}}) {
    EngineShop w;
    w.files.version("D:\\Windows\\system32\\kernel32.dll", onD);
    w.files.version("E:\\Windows\\system32\\kernel32.dll", onE);
    w.session.partitions = {Row("D:"), Row("E:")};
    CallBootMbr(w.session, version);
    EXPECT_EQ(w.commands().back(), std::string("bootsect.exe ") + loader + " S: /mbr")
        << version << " " << onD << " " << onE;
  }
}

TEST(CallBootMbr, StopsWhenTheWindowHasGone) {
  EngineShop w;
  w.applied("10.0.1.2");
  w.closeDuring("bcdboot");
  CallBootMbr(w.session, 10.0f);
  EXPECT_EQ(w.processes.started.size(), 1u);
}

}  // namespace pavoline::testing
