#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "config/language.h"
#include "form/main_layout.h"
#include "form/text_numbers.h"
#include "platform/text.h"
#include "support/layout_check.h"
#include "support/workshop.h"
#include "ui/controls.h"
#include "ui/small_windows.h"

namespace pavoline::testing {
namespace {

// The program in one of its languages, with the texts as they are shipped.
struct SpeakingWorkshop : Workshop {
  explicit SpeakingWorkshop(unsigned locale) {
    const std::string name = std::to_string(locale) + ".lng";
    std::ifstream file(PAVOLINE_SOURCE_DIR "/lang/" + name, std::ios::binary);
    std::stringstream content;
    content << file.rdbuf();
    files.put("X:\\Pavoline\\Lang\\" + name,
              "\xFF\xFE" + text.toUtf16(ReplaceAll(content.str(), "\n", "\r\n")));
    environment.thread = locale;
    LoadLanguage(session);
    LayOutMainWindow(form, locale);
  }
  std::string faultsOf(void (*show)(Session&)) {
    std::string faults;
    dialogs.modals.push_back([&](Form& window) { faults = LayoutFaults(window); });
    show(session);
    return faults;
  }
};

class WindowTexts : public ::testing::TestWithParam<unsigned> {};

TEST_P(WindowTexts, FitTheMainWindow) {
  SpeakingWorkshop w(GetParam());
  ASSERT_NE(String(w.session, kTextStart), "");
  for (const int status :
       {kTextStatusNormal, kTextStatusWide, kTextSearchingDrivers, kTextCreatingFiles,
        kTextApplyingMetadata, kTextRepairingBoot, kTextCopyingImage}) {
    w.form.status.setText(String(w.session, status));
    EXPECT_EQ(LayoutFaults(w.form), "");
  }
  w.form.command1[kStart].setText(String(w.session, kTextBusy));
  w.form.search.setText(String(w.session, kTextStop));
  EXPECT_EQ(LayoutFaults(w.form), "");
}

TEST_P(WindowTexts, FitTheSmallWindows) {
  SpeakingWorkshop w(GetParam());
  w.session.installRows = {{{"D:", "", "Disk", "NTFS", "100.00GB"}}};
  const auto choose = [](Session& session) {
    ShowPartitionChooser(session, PartitionPurpose::kInstall);
  };
  EXPECT_EQ(w.faultsOf(choose), "");
  w.session.installRows.clear();
  EXPECT_EQ(w.faultsOf(choose), "");
  EXPECT_EQ(w.faultsOf(ShowComputerNameDialog), "");
  EXPECT_EQ(w.faultsOf(ShowImageList), "");
  EXPECT_EQ(w.faultsOf(ShowAbout), "");
  EXPECT_EQ(w.faultsOf(ShowVirtualDiskWindow), "");

  std::string faults = "not shown";
  w.dialogs.modals.push_back([&](Form& window) {
    w.dialogs.modals.push_back([&](Form& creation) { faults = LayoutFaults(creation); });
    ButtonWith(window, String(w.session, kTextCreate)).press();
  });
  ShowVirtualDiskWindow(w.session);
  EXPECT_EQ(faults, "");
}

INSTANTIATE_TEST_SUITE_P(Languages, WindowTexts,
                         ::testing::Values(1028u, 1031u, 1033u, 1041u, 2052u));

}  // namespace
}  // namespace pavoline::testing
