// The partition that is written is the one that was confirmed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/text.h"
#include "support/installer.h"

namespace pavoline::testing {

using namespace ::testing;

using Spoil = std::function<void(InstallShop&)>;

Spoil Listed(const std::string& from, const std::string& to) {
  return [=](InstallShop& w) { w.partitionLines = ReplaceAll(w.partitionLines, from, to); };
}

TEST(CheckAgain, WritesNothingWhenItIsNotTheConfirmedVolume) {
  const std::tuple<const char*, Spoil, const char*> cases[] = {
      {"formatted meanwhile", [](InstallShop& w) { w.drives.wipe("E:"); }, "M5 E:"},
      {"label", Listed("My Disk", "Your Disk"), "M5 E:"},
      {"size", Listed("200.00GB", "100.00GB"), "M5 E:"},
      {"disk", Listed("Disk B", "Disk C"), "M5 E:"},
      {"address",
       [](InstallShop& w) {
         w.drives.add("E:", kDriveFixed, VolumePosition{3, 1});
         w.drives.setFacts("E:", w.plan.target.facts);
       },
       "M5 E:"},
      {"no longer listed", Listed("\tE:\t", "\tF:\t"), "M5 E:"},
      {"empty list", [](InstallShop& w) { w.partitionLines = ""; }, "M5 E:"},
      {"no lister", [](InstallShop& w) { w.processes.failNextStarts = 2; }, "M5 E:"},
      {"no batch", [](InstallShop& w) { w.files.full("C:\\Windows\\temp"); }, "M5 E:"},
      {"image gone", [](InstallShop& w) { w.files.drop(w.plan.source); }, "S11"}};
  for (const auto& [name, spoil, message] : cases) {
    for (const ImageKind kind : {ImageKind::kWim, ImageKind::kGho}) {
      InstallShop w;
      w.plan.kind = kind;
      w.session.partitions = {{"2:1\tE:\t200.00GB\tNTFS\tPrimary\tDisk B\tMy Disk\tGPT\t0"}};
      spoil(w);
      EXPECT_EQ(w.install(), 1) << name;
      EXPECT_THAT(w.heard(), ElementsAre(HasSubstr(message))) << name;
      EXPECT_TRUE(w.commands().empty()) << name;
      EXPECT_FALSE(w.form.timer1.enabled() || w.form.timer2.enabled());
    }
  }
}

TEST(CheckAgain, BelievesAnEmptyListTheSecondTimeOnly) {
  InstallShop w;
  const std::string lines = std::exchange(w.partitionLines, "");
  w.time.after(3, [&] { w.partitionLines = lines; });  // while the first one runs
  EXPECT_EQ(w.install(), 0);
}

}  // namespace pavoline::testing
