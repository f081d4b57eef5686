#include "engine/wim_apply.h"

#include "engine/command_runner.h"
#include "engine/format_partition.h"
#include "engine/setback.h"
#include "engine/wimboot_copy.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace pavoline {
namespace {

std::string LogPath(Session& session) { return TempFile(session, "apply.xml"); }

// Tries the two files that the apply will need, before anything on the partition is lost: a
// read-only or full temporary folder would show only after the formatting. It also takes away
// what an earlier run left in them.
bool TempFilesWritable(Session& session) {
  const std::string sample(64 * 1024, ' ');
  Files& files = session.platform.files;
  for (const std::string& path : {TempFile(session, "apply.bat"), LogPath(session)}) {
    const bool written = files.write(path, sample);
    files.remove(path);
    if (!written || files.exists(path)) return false;
  }
  return true;
}

// The quote closes behind the program's folder and the path goes on; the interpreter joins them.
// The blank behind the drive's backslash stands even without options.
std::string ApplyLine(Session& session, const std::string& source) {
  const int index = session.form.combo[kEditions].selected() + 1;
  return BatchPath(session, session.paths.appDir) + "\\Bin\\wimlib-imagex\\" +
         session.paths.imageToolArch + "\\wimlib-imagex.exe apply " + source + " " +
         std::to_string(index) + " " + session.form.text[kInstallPartition].text() + "\\ " +
         session.applyOptions + " >" + LogPath(session);
}

void StartApply(Session& session, const std::string& source) {
  // The monitor finds a log on its first tick, even before the tool has opened it.
  if (!session.platform.files.write(LogPath(session), "\r\n") ||
      !StartBatch(session, ApplyLine(session, source), "apply")) {
    FailInstallation(session, String(session, kTextApplyFailed), String(session, kTextError));
    return;
  }
  session.apply = ApplyProgress{};
  session.form.timer1.setEnabled(true);
}

}  // namespace

void WimSetup(Session& session) {
  const std::string image = session.form.combo1.text();
  Journal(session, "apply " + image + " to " + session.form.text[kInstallPartition].text());
  session.form.progressBar1.setMaximum(100);
  session.form.progressBar1.setValue(0);
  if (!TempFilesWritable(session)) {
    RefuseInstallation(session, String(session, kTextApplyFailed), kErrorMessage,
                       String(session, kTextError));
    return;
  }
  if (!session.form.check[kDoNotFormat].ticked() && !FormatInstallPartition(session)) return;

  // Only a WIM can back a system that runs from the copy; an ESD is applied from where it lies.
  std::string source = image;
  if (session.wimcopy && KindOf(image) == ImageKind::kWim) {
    source = CopyImageForWimboot(session, image);
    if (source.empty()) return;
  }
  StartApply(session, BatchPath(session, source));
}

}  // namespace pavoline
