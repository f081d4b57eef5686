#include "postinstall/driver_injection.h"

#include <gtest/gtest.h>

#include "engine/engine_shop.h"
#include "postinstall/driver_log.h"

namespace pavoline::testing {

const std::string kScript = "C:\\Windows\\temp\\SetDrv.bat";
const std::string kHead = "\r\nDeployment Image Servicing and Management tool\r\n\r\n";
const std::string kSearch = "Searching for driver packages to install...\r\n";
const std::string kFound = "Found 12 driver package(s) to install.\r\n";
const std::string kThird =
    "Installing 3 of 12 - D:\\DRIVERS\\oem3.inf: The driver package was successfully "
    "installed.\r\n";
const std::string kEnd = "The operation completed successfully.\r\n";

TEST(DriverLog, TheLastWholeLineTells) {
  using Case = std::tuple<std::string, DriverStep::Kind, int, int>;
  for (const auto& [log, kind, done, total] :
       {Case{"", DriverStep::kOther, 0, 0}, Case{"\r\n", DriverStep::kOther, 0, 0},
        Case{kHead + kSearch, DriverStep::kSearching, 0, 0},
        Case{"Searching for driver packages...", DriverStep::kOther, 0, 0},
        Case{kSearch + kFound, DriverStep::kOther, 0, 0},
        Case{kThird + "Installing 4 of 1", DriverStep::kInstalling, 3, 12},
        Case{"Installing 3 of many - a b: c d\r\n", DriverStep::kOther, 0, 0},
        Case{"Installing 99999 of 12 - a b: c\r\n", DriverStep::kInstalling, 0, 12},
        Case{kThird + kEnd, DriverStep::kOther, 0, 0}}) {
    const DriverStep step = ParseDriverLog(log);
    EXPECT_EQ(step.kind, kind) << log;
    EXPECT_EQ(step.done, done) << log;
    EXPECT_EQ(step.total, total) << log;
  }
}

struct DriverShop : EngineShop {
  explicit DriverShop(const std::string& folder) {
    files.folder(folder);
    files.shortNames = false;
    form.text[kDriverFolder].setText(folder);
  }
};

TEST(DriverInjection, FollowsDismToTheEnd) {
  DriverShop w("D:\\DRIVERS");
  w.processes.onStart("dism.exe", [&](ToolRun& run) {
    run.print(100, kHead + kSearch);
    run.print(1500, kFound + kThird);
    run.print(2500, kEnd);
    run.endsAt(4500);
  });
  StartDriverInjection(w.session);
  EXPECT_EQ(w.processes.started.at(0).script,
            "dism.exe /image:E:\\ /Add-Driver /Driver:D:\\DRIVERS /recurse /forceunsigned "
            ">C:\\Windows\\temp\\SetDrv.xml\r\n");
  w.run(1000);
  EXPECT_EQ(w.form.status.text(), "S44");
  w.run(1000);
  EXPECT_EQ(w.form.status.text(), "S43");
  EXPECT_EQ(w.form.progressBar1.value(), 3);
  EXPECT_EQ(w.form.progressBar1.maximum(), 12);
  w.run(2000);
  EXPECT_TRUE(w.form.timer3.enabled()) << "it still runs";
  w.run(1000);
  EXPECT_FALSE(w.form.timer3.enabled() || w.form.busy);
  EXPECT_FALSE(w.files.exists("C:\\Windows\\temp\\SetDrv.xml") || w.files.exists(kScript));
  EXPECT_EQ(w.form.progressBar1.value(), 100);
  EXPECT_TRUE(w.said("S40"));
}

TEST(DriverInjection, GoesOnWhateverDismSaidLast) {
  for (const std::string& last :
       {kThird, std::string("The DISM log file can be found at C:\\dism.log\r\n")}) {
    DriverShop w("D:\\DRIVERS");
    w.processes.onStart("dism.exe", [&](ToolRun& run) { run.print(500, kSearch + last); });
    StartDriverInjection(w.session);
    w.run(1000);
    EXPECT_FALSE(w.form.timer3.enabled() || w.form.busy) << last;
  }
}

TEST(DriverInjection, WithoutItsScriptOrDismTheInstallationGoesOn) {
  for (const bool scriptFails : {false, true}) {
    DriverShop w("D:\\my drivers & 100%");
    w.files.put(kScript, "stale");
    if (scriptFails) w.files.failNext(FileOperation::kWrite);
    StartDriverInjection(w.session);
    EXPECT_EQ(w.processes.ranLike("/Driver:\"D:\\my drivers & 100%\" /recurse"), !scriptFails);
    EXPECT_FALSE(w.processes.ranLike("stale"));
    w.run(1000);
    EXPECT_FALSE(w.form.timer3.enabled() || w.form.busy);
    EXPECT_TRUE(w.said("S40"));
  }
}

}  // namespace pavoline::testing
