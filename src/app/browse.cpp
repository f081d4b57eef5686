#include "app/browse.h"

#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "source/image_source.h"
#include "source/iso_mount.h"

namespace pavoline {
namespace {

// A path inside the program's folder is kept relative, so that settings survive on a medium whose
// drive letter changes.
std::string RelativeToProgram(const Ground& ground, const std::string& path) {
  const std::string folder = ground.paths.appDir + "\\";
  if (LowerAscii(path.substr(0, folder.size())) != LowerAscii(folder)) return path;
  return ".\\" + path.substr(folder.size());
}

FileRequest AnswerFileRequest(Workplace& workplace) {
  FileRequest request;
  request.title = String(workplace, kTextBrowseTitle);
  request.filters = {{"XML Files(*.xml)", "*.xml"}};
  std::string start =
      FromProgram(workplace.paths, workplace.form.optionRows[kAnswerFileRow].field.text());
  if (start.empty() || !workplace.platform.files.exists(start)) {
    start = workplace.paths.binDir + "\\unattend\\unattend.xml";
  }
  if (workplace.platform.files.exists(start)) request.initialFolder = ParentFolder(start);
  request.initialName = FileName(start);
  return request;
}

// An account that anybody at the keyboard can use is not to come as a surprise.
void TellOfEmptyPassword(Workplace& workplace, const std::string& path) {
  constexpr std::size_t kLongestTemplate = 1 << 20;  // bytes
  const std::string text =
      workplace.platform.files.readPart(path, 0, kLongestTemplate).value_or("");
  if (!Contains(text, "Password>")) return;
  for (const char* empty : {"<Value></Value>", "<Value/>", "<Value />"}) {
    if (Contains(text, empty)) workplace.form.status.setText(More(workplace, kMoreNoPassword));
  }
}

// Only UTF-8 with its byte-order mark is taken; both UTF-16 orders and ANSI are refused.
bool IsMarkedUtf8(const std::string& bytes) { return bytes.starts_with("\xEF\xBB"); }

// Nothing was chosen: a step that has no path yet is not wanted after all.
void LeaveWithoutPath(const OptionRow& row) {
  if (row.field.text().empty()) row.box.setValue(0);
}

}  // namespace

void BrowseImage(Session& session) {
  // A second reading must not start while an image is being read.
  if (!May(session, Action::kTakeSource)) return;
  const std::string path =
      session.platform.dialogs.openFile(ImageRequest(session, DialogPlace::kAnywhere));
  if (path.empty()) return;
  if (SourceKindOf(path).readBy == ReadBy::kMounting) {
    MountIso(session, path);
  } else {
    session.form.combo1.setText(path);
  }
}

void BrowseAnswerFile(Session& session) {
  const OptionRow& row = session.form.optionRows[kAnswerFileRow];
  const std::string path = session.platform.dialogs.openFile(AnswerFileRequest(session));
  if (path.empty()) return LeaveWithoutPath(row);
  if (!IsMarkedUtf8(session.platform.files.readPart(path, 0, 2).value_or(""))) {
    Message(session, String(session, kTextWrongEncoding), kErrorMessage,
            String(session, kTextInformation));
    return LeaveWithoutPath(row);
  }
  row.field.setText(RelativeToProgram(session, path));
  TellOfEmptyPassword(session, path);
}

void BrowseDrivers(Session& session) {
  const OptionRow& row = session.form.optionRows[kDriversRow];
  const std::string folder = session.platform.dialogs.chooseFolder(
      String(session, kTextBrowseTitle), FromProgram(session.paths, row.field.text()));
  if (folder.empty()) return LeaveWithoutPath(row);
  row.field.setText(RelativeToProgram(session, folder));
}

void BrowsePlugin(Session& session) {
  FileRequest request;
  request.title = String(session, kTextBrowseTitle);
  request.filters = {{"(*.exe;*.bat)", "*.exe;*.bat"}};
  const std::string path = session.platform.dialogs.openFile(request);
  if (path.empty()) return;
  session.form.optionRows[kPluginRow].field.setText(RelativeToProgram(session, path));
}

}  // namespace pavoline
