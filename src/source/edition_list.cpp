#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/text_services.h"
#include "run/command_runner.h"
#include "run/command_words.h"
#include "run/tool_files.h"
#include "source/source_wait.h"
#include "source/wim_info.h"

namespace pavoline {
namespace {

constexpr char kJobName[] = "WIMInfo";

struct Description {
  std::string xml;  // what the imaging program says about the source; empty when it says nothing
  bool asked = false;
};

Description Describe(Session& session) {
  const std::string command = BatchTool(session, Tool::kImaging) + " info --xml " +
                              BatchPath(session, session.form.combo1.text());
  Description description;
  {
    const SourceWait wait(session);
    description.asked = RunBatch(session, command, kJobName).started;
  }
  const std::string log = TempFile(session, std::string(kJobName) + ".log");
  description.xml = ReadUnicodeFile(session, log);
  session.platform.files.remove(log);
  return description;
}

// A full temporary folder says nothing about the image.
std::string WhyNoEditions(Ground& ground, const Description& description) {
  if (description.asked) return String(ground, kTextNoEdition);
  return ReplaceAll(More(ground, kMoreTempFile), "%f%",
                    TempFile(ground, std::string(kJobName) + ".bat"));
}

// The line of the first word that any line contains; the words come in order of preference.
int PreferredLine(Workplace& workplace, const std::string& words) {
  TextServices& text = workplace.platform.text;
  const std::vector<std::string>& lines = workplace.form.combo[kEditions].items();
  for (const std::string& word : Split(words, ",")) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (Contains(text.lower(lines[i]), text.lower(word))) return static_cast<int>(i);
    }
  }
  return 0;
}

void Preselect(Session& session) {
  ComboBox& list = session.form.combo[kEditions];
  const int count = static_cast<int>(list.items().size());
  int& asked = session.commandLine.wimIndex;
  list.select(0);
  if (asked >= 1 && asked <= count) {
    list.select(asked - 1);
    asked = 0;  // meant for the first source only
  } else if (count > 0) {
    list.select(PreferredLine(session, session.options.defaultSysEdition));
  }
}

}  // namespace

void ListEditions(Session& session, std::vector<WimImageInfo> editions) {
  session.editions = std::move(editions);
  Form1& form = session.form;
  for (const WimImageInfo& edition : session.editions) {
    form.combo[kEditions].addItem(edition.listText);
    form.combo[kEditionDetails].addItem(edition.detailText);
  }
  if (!session.editions.empty()) {
    form.combo[kEditions].setTooltip(session.editions.front().detailText);
  }
}

void GetWimInfo(Session& session) {
  const Description description = Describe(session);
  if (session.form.unloaded() || session.sourceRun.changed) return;
  Form1& form = session.form;
  if (description.xml.empty()) {
    Journal(session, "image not readable: " + form.combo1.text());
    ReturnToIdle(session);
    session.sourceFaultTold = true;
    Message(session, WhyNoEditions(session, description), kErrorMessage,
            String(session, kTextError));
    return;
  }
  ListEditions(session, ParseWimInfo(description.xml));
  Journal(session, "images listed: " + std::to_string(session.editions.size()));
  Preselect(session);
}

}  // namespace pavoline
