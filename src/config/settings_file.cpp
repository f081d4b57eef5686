#include "config/settings_file.h"

#include "form/text_numbers.h"
#include "platform/profile.h"
#include "platform/text.h"

namespace pavoline {
namespace {

constexpr char kSection[] = "Option";
constexpr int kSettingBuffer = 128;  // bytes with the final NUL: values hold 127
constexpr char kProductWord[] = "Pavoline";
constexpr char kProductTitle[] = "Pavoline Installer";

// A box that is ticked unless the settings say otherwise, and one that is not unless they say so.
bool DefaultOn(const std::string& value) { return value.empty() || value == "1"; }
bool DefaultOff(const std::string& value) { return value == "1"; }

// The caption with the program's own title unless the language file's is wanted, and a subtitle
// in front.
void ApplyTitle(Session& session) {
  std::string caption = session.form.caption();
  if (ReadSetting(session, "TitleLng") != "1") {
    caption = ReplaceAll(caption, kProductWord, kProductTitle);
  }
  const std::string subtitle = ReadSetting(session, "SubTitle");
  if (!subtitle.empty()) caption = subtitle + " - " + caption;
  session.form.setCaption(caption);
  session.titleCaption = caption;
}

// An optional step: its path first, so that ticking the box finds the field filled.
template <class Field>
void LoadRow(Session& session, Field& field, CheckBox& box, const char* pathKey,
             const char* flagKey) {
  const std::string path = ReadSetting(session, pathKey);
  const bool on = !path.empty() && DefaultOff(ReadSetting(session, flagKey));
  field.setText(path);
  box.setValue(on ? 1 : 0);
}

void LoadFolders(Session& session) {
  InstallOptions& options = session.options;
  options.searchType = DefaultOff(ReadSetting(session, "SearchType")) ? 1 : 0;
  const std::string level = ReadSetting(session, "SearchLevel");
  options.searchLevel = level.empty() ? 2 : LeadingInteger16(level);
  options.searchDir = ReadSetting(session, "SearchDir");
  const std::string pluginDir = ReadSetting(session, "PluginDir");
  options.pluginDir = pluginDir.empty() ? "Plug-in" : pluginDir;
  options.logDir = ReadSetting(session, "LogDir");
}

// Reading takes one pair of quotes of either kind off: a value that stands in quotes gets another.
std::string Quoted(const std::string& value) {
  const bool quoted = value.size() > 1 && value.front() == value.back() &&
                      (value.front() == '"' || value.front() == '\'');
  return quoted ? "\"" + value + "\"" : value;
}

// A Ghost image takes the choice away and clears the box; what was chosen is kept in its tag.
std::string FormatChoice(const CheckBox& box) {
  const bool taken = !box.enabled() && !box.tag().empty();
  return taken ? box.tag() : std::to_string(box.value());
}

}  // namespace

std::string ReadSetting(Session& session, const std::string& key) {
  return Trim(
      session.platform.profile.read(session.paths.settingsPath, kSection, key, kSettingBuffer));
}

void LoadIni(Session& session) {
  Form1& form = session.form;
  ApplyTitle(session);
  session.options.pcUser = ReadSetting(session, "PCUser");
  session.options.computerName = ReadSetting(session, "ComputerName");
  session.options.workGroup = ReadSetting(session, "WorkGroup");
  session.options.defaultSysEdition = ReadSetting(session, "DefaultSysEdition");
  form.check[kRepairBoot].setValue(DefaultOn(ReadSetting(session, "BootRepair")) ? 1 : 0);
  form.check[kRestart].setValue(DefaultOn(ReadSetting(session, "AutoRestart")) ? 1 : 0);
  session.options.usbPartition = DefaultOff(ReadSetting(session, "USBPartition"));
  const bool keep = DefaultOff(ReadSetting(session, "NoFormatting"));
  form.check[kDoNotFormat].setValue(keep ? 1 : 0);
  form.check[kDoNotFormat].setTag(keep ? "1" : "0");
  LoadRow(session, form.text[kAnswerFile], form.check[kUseAnswerFile], "UnattendFile", "Unattend");
  LoadRow(session, form.text[kDriverFolder], form.check[kAddDrivers], "AddDriverFile", "AddDriver");
  LoadRow(session, form.combo2, form.check[kRunPlugin], "PluginFile", "Plugin");
  LoadFolders(session);
  session.minimizeGhost = ReadSetting(session, "MinimizeGhost") != "0";
  session.advancedModeHide = DefaultOff(ReadSetting(session, "AdvancedModeHide"));
}

bool SaveAsIni(Session& session) {
  const Form1& form = session.form;
  const auto flag = [&](CheckIndex index) { return std::to_string(form.check[index].value()); };
  const InstallOptions& options = session.options;
  const std::pair<const char*, std::string> values[] = {
      {"BootRepair", flag(kRepairBoot)},
      {"AutoRestart", flag(kRestart)},
      {"NoFormatting", FormatChoice(form.check[kDoNotFormat])},
      {"Unattend", flag(kUseAnswerFile)},
      {"UnattendFile", form.text[kAnswerFile].text()},
      {"AddDriver", flag(kAddDrivers)},
      {"AddDriverFile", form.text[kDriverFolder].text()},
      {"Plugin", flag(kRunPlugin)},
      {"PluginFile", form.combo2.text()},
      {"ComputerName", options.computerName},
      {"PCUser", options.pcUser},
      {"WorkGroup", options.workGroup},
  };
  bool saved = true;
  for (const auto& [key, value] : values) {
    saved =
        session.platform.profile.write(session.paths.settingsPath, kSection, key, Quoted(value)) &&
        saved;
  }
  Journal(session,
          (saved ? "settings saved to " : "settings not saved to ") + session.paths.settingsPath);
  return saved;
}

}  // namespace pavoline
