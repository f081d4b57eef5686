#include "postinstall/driver_injection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "postinstall/driver_log.h"
#include "support/installer.h"

namespace pavoline::testing {

using ::testing::ElementsAre;

const std::string kScript = "C:\\Windows\\temp\\SetDrv.bat";
const std::string kHead = "\r\nDeployment Image Servicing and Management tool\r\n\r\n";
const std::string kSearch = "Searching for driver packages to install...\r\n";
const std::string kFound = "Found 12 driver package(s) to install.\r\n";
const std::string kThird =
    "Installing 3 of 12 - D:\\DRIVERS\\oem3.inf: The driver package was successfully "
    "installed.\r\n";
const std::string kFailed =
    "Installing 4 of 12 - D:\\A - B\\Net 1.INF: Error - An error occurred. The package could not "
    "be installed.\r\n";
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

TEST(DriverLog, NamesThePackagesThatFailedInAnyLanguage) {
  EXPECT_THAT(FailedDrivers(kHead + kSearch + kThird + kFailed + kFailed + kEnd +
                            "Installieren 5 von 12 - \\\\s\\c.inf: Fehler - Nicht installiert.\r\n"
                            "Error - see D:\\log.inf: there\r\nx.inf: a - b"),
              ElementsAre("D:\\A - B\\Net 1.INF", "\\\\s\\c.inf"));
}

struct DriverShop : InstallShop {
  explicit DriverShop(const std::string& folder = "D:\\DRIVERS") {
    files.folder(folder);
    files.shortNames = false;
    plan.driverFolder = folder;
    plan.format = false;
  }
  // Runs the installation up to the driver step.
  void beginDrivers() {
    begin();
    EXPECT_TRUE(runUntil([&] { return processes.ranLike("dism.exe") || !session.installation; }));
  }
};

TEST(DriverInjection, FollowsDismToTheEnd) {
  DriverShop w;
  w.processes.onStart("dism.exe", [&](ToolRun& run) {
    run.print(100, kHead + kSearch);
    run.print(1500, kFound + kThird);
    run.print(2500, kEnd);
    run.endsAt(4500);
  });
  w.beginDrivers();
  EXPECT_EQ(w.processes.started.back().script,
            "dism.exe /image:E:\\ /Add-Driver /Driver:D:\\DRIVERS /recurse /forceunsigned "
            ">C:\\Windows\\temp\\SetDrv.xml\r\n");
  w.run(1000);
  EXPECT_EQ(w.form.status.text(), "SearchingDrivers");
  w.run(1000);
  EXPECT_EQ(w.form.status.text(), "AddingDrivers");
  EXPECT_EQ(w.form.progressBar1.value(), 3);
  EXPECT_EQ(w.form.progressBar1.maximum(), 12);
  w.run(2000);
  EXPECT_TRUE(w.session.installation) << "it still runs";
  w.run(600);
  EXPECT_FALSE(w.form.timer3.enabled() || w.session.installation);
  EXPECT_FALSE(w.files.exists("C:\\Windows\\temp\\SetDrv.xml") || w.files.exists(kScript));
  EXPECT_EQ(w.form.progressBar1.value(), 100);
  EXPECT_THAT(w.heard(), ElementsAre("Finished|Information|64"));
}

TEST(DriverInjection, SaysHowDismEnded) {
  struct Case {
    const char* what;
    std::string last;  // printed after half a second
    int code;
    const char* image;
    long fromMs, toMs;  // of the step's end
    std::string text;
  };
  const std::string lacking = "Incomplete\nDriversFailed D:\\DRIVERS|Information|48";
  for (const Case& c :
       {Case{"not in the list while its interpreter runs", kThird + kEnd, 0, "starting.exe", 4000,
             4200, "Finished|Information|64"},
        Case{"failed", kFailed + "The DISM log file can be found at C:\\dism.log\r\n", 2,
             "dism.exe", 4000, 4200,
             "Incomplete\nDriversFailed D:\\DRIVERS\nDriversNamed Net 1.INF|Information|48"},
        Case{"died while it searched", kSearch, 255, "dism.exe", 64000, 67000, lacking}}) {
    DriverShop w;
    w.processes.onStart("dism.exe", [&](ToolRun& run) {
      run.image = c.image;
      run.print(500, kHead + c.last);
      run.endsAt(4000);
      run.exits(c.code);
    });
    w.beginDrivers();
    const long began = w.time.now();
    ASSERT_TRUE(w.runUntil([&] { return !w.session.installation; })) << c.what;
    EXPECT_THAT(w.heard(), ElementsAre(c.text)) << c.what;
    EXPECT_EQ(w.session.exitCode == ExitCode::kIncomplete, c.code != 0) << c.what;
    EXPECT_GE(w.time.now() - began, c.fromMs) << c.what;
    EXPECT_LE(w.time.now() - began, c.toMs) << c.what;
  }
}

// A folder that a batch file cannot name goes to the interpreter directly; what did not happen is
// told, and a folder that has gone is named.
TEST(DriverInjection, GoesOnWithoutItsScriptDismOrFolder) {
  const std::string wide = "D:\\my drivers & 100% \xE4\xB8\x8A";
  struct Case {
    std::string folder;
    const char* spoilt;
    int code;
    const char* more;
  };
  for (const Case& c : {Case{wide, "", 0, ""}, Case{"D:\\DRIVERS", "script", 5, "DriversFailed"},
                        Case{"D:\\DRIVERS", "start", 5, "DriversFailed"},
                        Case{"D:\\DRIVERS", "folder", 5, "DriversMissing"}}) {
    DriverShop w(c.folder);
    w.files.put(kScript, "stale");
    const std::string spoilt = c.spoilt;
    w.processes.onStart("bootsect.exe", [&](ToolRun& run) {
      run.does(10, [&] {
        if (spoilt == "script") w.files.failNext(FileOperation::kWrite);
        if (spoilt == "start") w.processes.failNextStarts = 1;
        if (spoilt == "folder") w.files.drop(c.folder);
      });
    });
    EXPECT_EQ(w.install(), c.code) << spoilt;
    EXPECT_EQ(w.processes.ranLike("/Driver:\"D:\\my drivers & 100\"%\" \xE4\xB8\x8A\" /recurse"),
              spoilt.empty());
    EXPECT_EQ(w.heard().back(),
              spoilt.empty() ? "Finished|Information|64"
                             : "Incomplete\n" + (c.more + (" " + c.folder)) + "|Information|48");
    EXPECT_FALSE(w.processes.ranLike("stale"));
  }
}

}  // namespace pavoline::testing
