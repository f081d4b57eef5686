#include "config/language.h"

#include <optional>
#include <utility>

#include "config/locales.h"
#include "form/text_numbers.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/profile.h"
#include "platform/text.h"
#include "platform/text_services.h"

namespace pavoline {
namespace {

constexpr int kTextBuffer = 255;  // bytes with the final NUL: texts hold 254

#define PAVOLINE_KEY(name, key) key,
constexpr const char* kOptionKeys[] = {PAVOLINE_LANGUAGE_OPTIONS(PAVOLINE_KEY)};
#undef PAVOLINE_KEY

std::string Numbered(const char* word, int n) {
  return std::string(word) + "(" + std::to_string(n) + ")";
}

std::string FileOf(const Ground& ground, unsigned locale) {
  return ground.paths.appDir + "\\Lang\\" + std::to_string(locale) + ".lng";
}

// The thread's locale follows the language in use.
void ChooseLanguageFile(Session& session) {
  Environment& environment = session.platform.environment;
  const auto missing = [&] {
    return !session.platform.files.exists(FileOf(session, session.language));
  };
  const unsigned related = LocaleOf(session.language).related;
  if (related != 0 && missing()) session.language = environment.setThreadLocale(related);
  if (missing()) session.language = environment.setThreadLocale(kEnglish);
  session.paths.langFile = FileOf(session, session.language);
}

ProfileSection ReadSection(Ground& ground, const std::string& file, const char* section) {
  return ground.platform.profile.readSection(file, section, kTextBuffer);
}

// A section of the language file. What it lacks is as in another file, opened for that alone.
class SectionOfTwoFiles {
 public:
  SectionOfTwoFiles(Ground& ground, const char* section, std::string otherFile)
      : ground_(ground),
        name_(section),
        otherFile_(std::move(otherFile)),
        own_(ReadSection(ground, ground.paths.langFile, section)) {}

  std::string own(const std::string& key) const { return own_.value(key); }
  std::string value(const std::string& key) {
    std::string text = own(key);
    if (!text.empty()) return text;
    if (!other_) other_ = ReadSection(ground_, otherFile_, name_);
    return other_->value(key);
  }

 private:
  Ground& ground_;
  const char* name_;
  std::string otherFile_;
  ProfileSection own_;
  std::optional<ProfileSection> other_;
};

// But for the font, what the file does not say is as in the related language.
void ReadOptions(Session& session) {
  SectionOfTwoFiles section(session, "Option", FileOf(session, LocaleOf(session.language).related));
  for (std::size_t n = 0; n < kOptionCount; ++n) {
    const char* key = kOptionKeys[n];
    session.texts.options[n] = n == kOptionFont ? section.own(key) : section.value(key);
  }
}

void ReadTables(Ground& ground) {
  const ProfileSection section = ReadSection(ground, ground.paths.langFile, "Language");
  int n = 0;
  for (std::string& text : ground.texts.strings) text = section.value(Numbered("String", n++));
  n = 0;
  for (std::string& text : ground.texts.captions) text = section.value(Numbered("Caption", n++));
}

// A language file made for an earlier version lacks these: they are then English.
void ReadMore(Ground& ground) {
  SectionOfTwoFiles section(ground, "More", FileOf(ground, kEnglish));
  int n = 0;
  for (std::string& text : ground.texts.more) text = section.value(Numbered("More", n++));
}

void ChooseFont(Workplace& workplace) {
  for (const std::string& name : Split(workplace.texts.options[kOptionFont], ",")) {
    const std::string font = Trim(name);
    if (font.empty() || !workplace.platform.environment.fontExists(font)) continue;
    workplace.form.setFont(font);
    return;
  }
}

void ApplyCaptions(Workplace& workplace) {
  Form1& form = workplace.form;
  const auto caption = [&](CaptionNumber n) -> const std::string& {
    return workplace.texts.captions[n];
  };
  form.command1[kStart].setText(String(workplace, kTextStart));
  form.status.setText(String(workplace, kTextStatusNormal));
  form.search.setText(String(workplace, kTextSearch));
  form.menu.setText(More(workplace, kMoreMenu) + " \u25bc");
  form.stop.setText(More(workplace, kMoreStopButton));
  form.label[0].setText(caption(kCaptionImage));
  form.label[1].setText(caption(kCaptionEdition));
  form.label[2].setText(caption(kCaptionBootPartition));
  form.label[3].setText(caption(kCaptionInstallPartition));
  form.check[kRepairBoot].setText(caption(kCaptionRepairBoot));
  form.check[kRestart].setText(caption(kCaptionRestart));
  form.command1[kChooseBoot].setText(caption(kCaptionChooseBoot));
  form.command1[kChooseInstall].setText(caption(kCaptionChooseInstall));
  form.check[kDoNotFormat].setText(caption(kCaptionDoNotFormat));
  for (const OptionRow& row : form.optionRows) row.box.setText(caption(row.caption));
  form.frame[kOptionsFrame].setText(caption(kCaptionOptions));
  form.frame[kDetailsFrame].setText(String(workplace, kTextDetails));
}

// A caption as it is spoken: without the mark of its access key, colon and dots.
std::string Spoken(const std::string& caption) {
  std::string text = caption;
  if (const auto key = text.find("(&"); key != std::string::npos) text.erase(key, 4);
  text = ReplaceAll(text, "&", "");
  for (const std::string_view end : {"...", ":", "\uff1a"}) {
    if (EndsWith(text, end)) text.resize(text.size() - end.size());
  }
  return text;
}

// What shows no text of its own, or the same as its neighbour, is told apart by a name; that of a
// button is its tooltip as well.
void NameControls(Workplace& workplace) {
  Form1& form = workplace.form;
  const auto caption = [&](CaptionNumber n) { return Spoken(workplace.texts.captions[n]); };
  form.progressBar1.setSpokenName(More(workplace, kMoreProgress));
  form.menu.setSpokenName(Spoken(More(workplace, kMoreMenu)));
  const auto browse = [&](CaptionNumber n) {
    return String(workplace, kTextBrowseTitle) + " - " + caption(n);
  };
  const auto name = [](Button& button, const std::string& text) {
    button.setSpokenName(text);
    button.setTooltip(text);
  };
  name(form.command1[kBrowseImage], browse(kCaptionImage));
  name(form.command1[kChooseBoot], String(workplace, kTextChooseBootTitle));
  name(form.command1[kChooseInstall], String(workplace, kTextChooseInstallTitle));
  for (const OptionRow& row : form.optionRows) {
    row.field.setSpokenName(caption(row.caption));
    name(row.browse, browse(row.caption));
  }
}

// Profile reads strip blanks and one pair of quotes, so a text that has them at its ends is quoted.
std::string ProfileLine(const std::string& key, const std::string& value) {
  const auto special = [](char c) { return c == ' ' || c == '"' || c == '\''; };
  const bool quote = !value.empty() && (special(value.front()) || special(value.back()));
  return key + "=" + (quote ? "\"" + value + "\"" : value) + "\r\n";
}

}  // namespace

void LoadLanguage(Session& session) {
  if (session.form.name() != "Form1") return;
  ChooseLanguageFile(session);
  ReadOptions(session);
  ChooseFont(session);
  ReadTables(session);
  ReadMore(session);
  ApplyCaptions(session);
  NameControls(session);
}

bool WriteLanguageFile(Ground& ground, const std::string& path) {
  const Texts& texts = ground.texts;
  std::string file = "[Option]\r\n";
  for (std::size_t n = 0; n < kOptionCount; ++n) {
    if (!texts.options[n].empty()) file += ProfileLine(kOptionKeys[n], texts.options[n]);
  }
  file += "\r\n[Language]\r\n" + ProfileLine("Font", texts.options[kOptionFont]);
  for (std::size_t n = 0; n < texts.captions.size(); ++n) {
    file += ProfileLine(Numbered("Caption", static_cast<int>(n)), texts.captions[n]);
  }
  for (std::size_t n = 0; n < texts.strings.size(); ++n) {
    file += ProfileLine(Numbered("String", static_cast<int>(n)), texts.strings[n]);
  }
  file += "\r\n[More]\r\n";
  for (std::size_t n = 0; n < texts.more.size(); ++n) {
    file += ProfileLine(Numbered("More", static_cast<int>(n)), texts.more[n]);
  }
  // UTF-16 holds every language; the new file takes the name only once it is whole.
  Files& files = ground.platform.files;
  const std::string draft = path + ".new";
  const bool written = files.write(draft, "\xFF\xFE" + ground.platform.text.toUtf16(file)) &&
                       files.rename(draft, path);
  if (!written) files.remove(draft);
  Journal(ground, (written ? "language file written: " : "language file not written: ") + path);
  return written;
}

}  // namespace pavoline
