#include "source/image_source.h"

#include "form/text_numbers.h"
#include "platform/files.h"
#include "platform/text.h"
#include "session/activity_scope.h"
#include "session/split_image.h"
#include "source/iso_mount.h"
#include "source/wim_info.h"

namespace pavoline {
namespace {

void ClearLists(Session& session) {
  Form1& form = session.form;
  session.editions.clear();
  session.ghost.reset();
  for (ComboBox& list : form.combo) list.clear();
  form.combo[kEditions].setTooltip("");
}

// Formatting is no choice for a Ghost image: the box is disabled with one, its value kept for the
// next source.
void DisableFormatChoice(Form1& form) {
  CheckBox& box = form.check[kDoNotFormat];
  form.marks.formatChoice = std::to_string(box.value());
  box.setValue(0);
  box.setEnabled(false);
}

void RestoreFormatChoice(Form1& form) {
  CheckBox& box = form.check[kDoNotFormat];
  if (box.enabled()) return;
  const std::string& kept = form.marks.formatChoice;
  if (!kept.empty()) box.setValue(LeadingInteger16(kept));
  box.setEnabled(true);
}

// The Ghost program stands in place of editions.
void ListGhostProgram(Session& session) {
  const std::string& arch = session.paths.imageToolArch;
  session.ghost = FindGhostProgram(session.platform.files, session.paths);
  WimImageInfo line;
  if (session.ghost) {
    line.listText = arch + "\\Ghost.exe Ver:" + session.ghost->version;
    line.detailText = ReplaceAll(session.ghost->path, session.paths.appDir, "Path:.");
  } else {
    line.listText = arch + "\\" + String(session, kTextGhostMissingLine);
  }
  ListEditions(session, {line});
  session.form.combo[kEditions].select(0);
  DisableFormatChoice(session.form);
}

// Another part than the first gives way to the first.
void ListSplitImage(Session& session, const std::string& path) {
  Files& files = session.platform.files;
  const auto part = ReadImagePart(files, path);
  if (!part || part->number == 1) return GetWimInfo(session);
  const std::string first = FirstPart(files, path, *part);
  if (!first.empty()) return session.form.combo1.setText(first);
  Journal(session, "not the first part: " + path);
  ReturnToIdle(session);
  session.sourceFaultTold = true;
  Message(session,
          ReplaceAll(ReplaceAll(More(session, kMoreNotFirstPart), "%f%", path), "%n%",
                     std::to_string(part->number)),
          kErrorMessage, String(session, kTextError));
}

void ListByKind(Session& session, const std::string& path) {
  switch (SourceKindOf(path).readBy) {
    case ReadBy::kImagingProgram:
      return GetWimInfo(session);
    case ReadBy::kMounting:
      return MountIso(session, path);
    case ReadBy::kGhostProgram:
      return ListGhostProgram(session);
    case ReadBy::kFirstPart:
      return ListSplitImage(session, path);
    case ReadBy::kNothing:
      break;
  }
}

void React(Session& session) {
  Form1& form = session.form;
  ClearLists(session);
  RestoreFormatChoice(form);
  const std::string path = form.combo1.text();
  if (path.empty() || !session.platform.files.exists(path)) return;

  Journal(session, "source: " + path);
  session.sourceFaultTold = false;
  {
    const ActivityScope reading(session, Activity::kReadingSource);
    ListByKind(session, path);
  }
  if (form.unloaded()) return;
  // An image inside an ISO is read while the ISO is. At the end of all of it the box is opened,
  // also for an unattended run, which waits for that.
  if (session.activity != Activity::kReadingSource) form.combo1.setEnabled(true);
  if (form.combo[kEditions].text().empty()) {
    form.focus(form.combo1);
  } else {
    form.focus(form.combo[kEditions]);
  }
}

// A change while a tool runs for the text before it. The box is disabled then, so that its list
// takes no pick; a text set by the program's own dialogs is read as soon as the tool has ended.
void PutOff(Session& session) {
  ComboBox& box = session.form.combo1;
  SourceRun& run = session.sourceRun;
  if (box.selected() >= 0 && box.text() != run.source) {
    box.setText(run.source);
  } else {
    run.changed = box.text() != run.source;
  }
}

}  // namespace

void SourceChanged(Session& session) {
  if (session.sourceRun.waiting) return PutOff(session);
  do {
    session.sourceRun.changed = false;
    React(session);
  } while (session.sourceRun.changed && !session.form.unloaded());
}

void SourceDropped(Session& session, const std::vector<std::string>& files) {
  if (files.empty() || !May(session, Action::kTakeSource)) return;
  const std::string& path = files.front();
  const ReadBy readBy = SourceKindOf(path).readBy;
  if (readBy == ReadBy::kMounting) {
    MountIso(session, path);
  } else if (readBy != ReadBy::kNothing) {
    session.form.combo1.setText(path);
  }
}

FileRequest ImageRequest(Ground& ground, DialogPlace place) {
  FileRequest request;
  request.title = String(ground, kTextBrowseTitle);
  std::vector<std::string> filters = {SharedFilter(place)};
  for (const SourceKind& kind : SourceKinds()) {
    if (kind.ownFilter) filters.push_back(std::string("*") + kind.extension);
  }
  for (const std::string& filter : filters) {
    request.filters.push_back({String(ground, kTextImageFilter) + "(" + filter + ")", filter});
  }
  return request;
}

}  // namespace pavoline
