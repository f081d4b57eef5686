// Empty disks on real disk images: what is offered, what diskpart makes of them, what stays as it
// is.
#include "person.h"
#include "stage.h"
#include "ui/system_menu.h"

namespace e2e {
namespace {

using bench::Window;
using testing::ElementsAre;
using testing::HasSubstr;
using namespace pavoline;

class PrepareDisk : public OnTheBench {
 protected:
  // A disk of 5 GB, its partitions as sfdisk takes them; a command may change its image then.
  void addDisk(int number, const std::string& model, const std::string& script = "",
               const std::string& traits = "", const std::string& command = ":") {
    ASSERT_EQ(0, onImage(number, "bash \"$1/bench\" disk \"$1\" $2 5G \"$3\" \"$4\" <<<\"$5\"",
                         {model, traits, script}));
    ASSERT_EQ(0, onImage(number, command));
  }
  // Runs a command with the run's folder as $1, the disk's number as $2 and its image as $image.
  int onImage(int number, const std::string& command,
              const std::vector<std::string>& arguments = {}) const {
    std::vector<std::string> call = {
        "bash", "-c",          "image=$1/disks/$2.disk; { " + command + "; } >/dev/null 2>&1",
        "bash", BenchFolder(), std::to_string(number)};
    call.insert(call.end(), arguments.begin(), arguments.end());
    return bench::RunUnix(call);
  }
  std::string tableOf(int number) const {
    onImage(number, "sfdisk -d \"$image\" >\"$1/prefix/drive_c/table\"");
    return Read("C:\\table");
  }
  Window opens(const Person& person) const {
    person.main.window().systemCommand(kMenuPrepareDisk);
    return person.sees("PrepareDisk");
  }
  std::vector<std::string> offered(const Window& window) const {
    std::vector<std::string> numbers;
    for (const auto& row : window.childOfClass("SysListView32").rows()) numbers.push_back(row[0]);
    return numbers;
  }
};

TEST_F(PrepareDisk, EmptyOnesBecomeThePartitionsOfAnInstallation) {
  addDisk(1, "Blank One");
  addDisk(2, "Empty Table", "label: dos");
  Person person;
  using Case = std::tuple<int, std::string, const char*, std::vector<const char*>>;
  for (const auto& [number, model, style, parts] :
       {Case{1,
             "Blank One",
             "GPT",
             {"=      532480, type=C12A", "=       32768, type=E3C9", "=EBD0"}},
        Case{2, "Empty Table", "MBR", {"label: dos", "=     1024000, type=7, boot", "type=7\n"}}}) {
    const Window window = opens(person);
    EXPECT_EQ(offered(window).front(), std::to_string(number));
    window.childWithText(style).click();
    person.presses(window, More(kMorePrepare).substr(1));
    EXPECT_THAT(person.hears(), HasSubstr("(" + model + ", 5.00GB)"));
    const std::string done = person.hears();
    const std::string boot = person.main.text(kBootPartition).text();
    const std::string install = person.main.text(kInstallPartition).text();
    EXPECT_THAT(done, HasSubstr("Boot partition: " + boot + ", install partition: " + install));
    EXPECT_TRUE(Exists(boot + "\\") && Exists(install + "\\")) << done;
    for (const char* part : parts) EXPECT_THAT(tableOf(number), HasSubstr(part));
    EXPECT_TRUE(person.leftInPeace());
  }
  EXPECT_EQ(ArgumentsOf("diskpart").size(), 2u);
}

TEST_F(PrepareDisk, WhatHoldsAnythingIsNotOfferedAndNeverTouched) {
  addDisk(1, "Becomes used");
  addDisk(2, "One partition", "size=1G");
  addDisk(3, "Superfloppy", "", "", "mkntfs -FQq $image");
  addDisk(4, "File system alone", "", "", "mkfs.ext4 -qF $image");
  addDisk(5, "Locked", "", "readonly");
  addDisk(6, "Stick", "", "removable");
  addDisk(7, "Array", "", "", "printf RAID | dd of=$image conv=notrunc bs=1 seek=5368708096");
  addDisk(8, "Extended", "size=1G, type=f");
  Person person;
  const Window window = opens(person);
  EXPECT_THAT(offered(window), ElementsAre("1"));
  person.presses(window, More(kMorePrepare).substr(1));
  const auto question = bench::WaitForMessage(person.main.program(), kPatience);
  ASSERT_TRUE(question);
  ASSERT_EQ(0, onImage(1, "sfdisk -q $image <<<size=2G && cp --sparse=always $image $image.kept"));
  EXPECT_TRUE(bench::Answer(*question, IDOK));
  EXPECT_THAT(person.hears(), HasSubstr("(Becomes used) is no longer empty"));
  EXPECT_EQ(0, onImage(1, "qemu-img compare -q -f raw -F raw $image $image.kept && rm $image.kept"))
      << "not a byte has changed";
  EXPECT_TRUE(person.leftInPeace());
  EXPECT_TRUE(ArgumentsOf("diskpart").empty());
}

}  // namespace
}  // namespace e2e
