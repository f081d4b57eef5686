#include "config/settings_file.h"

#include <algorithm>

#include "platform/profile.h"
#include "platform/text.h"

namespace pavoline {
namespace {

constexpr char kSection[] = "Option";
constexpr int kSettingBuffer = 128;  // bytes with the final NUL: values hold 127
constexpr char kProductWord[] = "Pavoline";
constexpr char kProductTitle[] = "Pavoline Installer";

// A key of the file, as it is loaded and as it is saved.
struct Setting {
  const char* key;
  const char* otherwise;  // stands for a value that is missing or empty
  int saved;              // place among what SaveAsIni writes, from 1; 0: never written
  void (*load)(Session& session, const std::string& value);
  std::string (*save)(const Session& session) = nullptr;
};

constexpr int kNever = 0;  // an administrator's setting

void SetTitle(Session& session, const std::string& caption) {
  session.form.setCaption(caption);
  session.titleCaption = caption;
}

// The program's own title unless the language file's is wanted.
void LoadTitle(Session& session, const std::string& value) {
  const std::string& caption = session.form.caption();
  SetTitle(session, value == "1" ? caption : ReplaceAll(caption, kProductWord, kProductTitle));
}

void LoadSubtitle(Session& session, const std::string& value) {
  if (!value.empty()) SetTitle(session, value + " - " + session.form.caption());
}

// A field of the session or of its options.
template <class Value>
Value& At(Session& session, Value Choices::*field) {
  return session.*field;
}
template <class Value>
Value& At(Session& session, Value InstallOptions::*field) {
  return session.options.*field;
}

template <auto field>
void LoadText(Session& session, const std::string& value) {
  At(session, field) = value;
}
template <auto field>
std::string SaveText(const Session& session) {
  return session.options.*field;
}
template <auto field>
void LoadFlag(Session& session, const std::string& value) {
  At(session, field) = value == "1";
}
template <auto field>
void LoadNumber(Session& session, const std::string& value) {
  At(session, field) = LeadingInteger16(value);
}
// On unless it is said to be off.
template <auto field>
void LoadUnlessOff(Session& session, const std::string& value) {
  At(session, field) = value != "0";
}

template <CheckIndex index>
void LoadBox(Session& session, const std::string& value) {
  session.form.check[index].setValue(value == "1" ? 1 : 0);
}
template <CheckIndex index>
std::string SaveBox(const Session& session) {
  return std::to_string(session.form.check[index].value());
}

void LoadFormatChoice(Session& session, const std::string& value) {
  LoadBox<kDoNotFormat>(session, value);
  session.form.marks.formatChoice = value == "1" ? "1" : "0";
}
// A Ghost image takes the choice away and clears the box; what was chosen is kept.
std::string SaveFormatChoice(const Session& session) {
  const CheckBox& box = session.form.check[kDoNotFormat];
  const std::string& kept = session.form.marks.formatChoice;
  return !box.enabled() && !kept.empty() ? kept : std::to_string(box.value());
}

template <OptionRowIndex index>
void LoadPath(Session& session, const std::string& value) {
  session.form.optionRows[index].field.setText(value);
}
template <OptionRowIndex index>
std::string SavePath(const Session& session) {
  return session.form.optionRows[index].field.text();
}
// After its path: a step without one is not wanted, and ticking the box finds the field filled.
template <OptionRowIndex index>
void LoadStep(Session& session, const std::string& value) {
  const OptionRow& row = session.form.optionRows[index];
  row.box.setValue(value == "1" && !row.field.text().empty() ? 1 : 0);
}
template <OptionRowIndex index>
std::string SaveStep(const Session& session) {
  return std::to_string(session.form.optionRows[index].box.value());
}

using Options = InstallOptions;

// In the order in which they are loaded.
constexpr Setting kSettings[] = {
    {"TitleLng", "0", kNever, LoadTitle},
    {"SubTitle", "", kNever, LoadSubtitle},
    {"PCUser", "", 11, LoadText<&Options::pcUser>, SaveText<&Options::pcUser>},
    {"ComputerName", "", 10, LoadText<&Options::computerName>, SaveText<&Options::computerName>},
    {"WorkGroup", "", 12, LoadText<&Options::workGroup>, SaveText<&Options::workGroup>},
    {"DefaultSysEdition", "", kNever, LoadText<&Options::defaultSysEdition>},
    {"BootRepair", "1", 1, LoadBox<kRepairBoot>, SaveBox<kRepairBoot>},
    {"AutoRestart", "1", 2, LoadBox<kRestart>, SaveBox<kRestart>},
    {"USBPartition", "0", kNever, LoadFlag<&Options::usbPartition>},
    {"NoFormatting", "0", 3, LoadFormatChoice, SaveFormatChoice},
    {"UnattendFile", "", 5, LoadPath<kAnswerFileRow>, SavePath<kAnswerFileRow>},
    {"Unattend", "0", 4, LoadStep<kAnswerFileRow>, SaveStep<kAnswerFileRow>},
    {"AddDriverFile", "", 7, LoadPath<kDriversRow>, SavePath<kDriversRow>},
    {"AddDriver", "0", 6, LoadStep<kDriversRow>, SaveStep<kDriversRow>},
    {"PluginFile", "", 9, LoadPath<kPluginRow>, SavePath<kPluginRow>},
    {"Plugin", "0", 8, LoadStep<kPluginRow>, SaveStep<kPluginRow>},
    {"SearchType", "0", kNever, LoadFlag<&Options::searchType>},
    {"SearchLevel", "2", kNever, LoadNumber<&Options::searchLevel>},
    {"SearchDir", "", kNever, LoadText<&Options::searchDir>},
    {"PluginDir", "Plug-in", kNever, LoadText<&Options::pluginDir>},
    {"LogDir", "", kNever, LoadText<&Options::logDir>},
    {"MinimizeGhost", "1", kNever, LoadUnlessOff<&Choices::minimizeGhost>},
    {"AdvancedModeHide", "0", kNever, LoadFlag<&Choices::advancedModeHide>},
};

std::vector<const Setting*> InOrderOfSaving() {
  std::vector<const Setting*> settings;
  for (const Setting& setting : kSettings) {
    if (setting.saved != kNever) settings.push_back(&setting);
  }
  std::ranges::sort(settings, {}, &Setting::saved);
  return settings;
}

// Reading takes one pair of quotes of either kind off: a value that stands in quotes gets another.
std::string Quoted(const std::string& value) {
  const bool quoted = value.size() > 1 && value.front() == value.back() &&
                      (value.front() == '"' || value.front() == '\'');
  return quoted ? "\"" + value + "\"" : value;
}

}  // namespace

void LoadIni(Session& session) {
  const ProfileSection section =
      session.platform.profile.readSection(session.paths.settingsPath, kSection, kSettingBuffer);
  for (const Setting& setting : kSettings) {
    const std::string value = section.value(setting.key);
    setting.load(session, value.empty() ? setting.otherwise : value);
  }
}

bool SaveAsIni(Session& session) {
  Profile& profile = session.platform.profile;
  const std::string& file = session.paths.settingsPath;
  bool saved = true;
  for (const Setting* setting : InOrderOfSaving()) {
    saved = profile.write(file, kSection, setting->key, Quoted(setting->save(session))) && saved;
  }
  Journal(session, (saved ? "settings saved to " : "settings not saved to ") + file);
  return saved;
}

}  // namespace pavoline
