#include <algorithm>
#include <array>

#include "app/command_line.h"
#include "config/language.h"
#include "config/settings_file.h"
#include "fuzz/fuzz.h"
#include "platform/text.h"
#include "postinstall/answer_file.h"
#include "postinstall/plugins.h"
#include "source/image_search.h"
#include "support/fake_text.h"
#include "ui/left_bytes.h"

namespace pavoline::testing {
namespace {

void ReadCommandLine(std::string_view input) {
  static FakeTextServices text;
  const auto arguments = Split(input, "\n");
  const CommandLine line = ParseCommandLine(arguments, text);
  const auto asked = [&](const char* word) {
    return std::ranges::any_of(arguments, [&](const std::string& argument) {
      const std::string lower = LowerAscii(argument);
      // These take their whole argument, whatever it holds.
      const bool named =
          std::ranges::any_of(std::array{"/ini:", "/name:", "/drivers:", "/answer:", "/logdir:"},
                              [&](const char* begin) { return lower.starts_with(begin); });
      return !named && Contains(text.lower(argument), word);
    });
  };
  Holds(line.options.install == asked("/install") && line.options.silent == asked("/slient") &&
            line.options.dryRun == asked("/dryrun") && line.locale.value_or(1000) >= 1000 &&
            std::abs(line.options.wimIndex) <= 32768,
        "nothing starts by itself that was not asked to");
}

void KeepSettings(std::string_view input) {
  static FuzzShop shop;
  const auto saved = [&] {
    LoadIni(shop.session);
    SaveAsIni(shop.session);
    return shop.files.text(shop.session.paths.settingsPath);
  };
  shop.tidy();
  shop.form.setCaption("Pavoline");
  shop.files.put(shop.session.paths.settingsPath, std::string(input));
  const std::string before = saved();
  Holds(saved() == before, "what is saved is loaded again");
}

void KeepLanguage(std::string_view input) {
  static FuzzShop shop;
  const std::string file = "X:\\Pavoline\\Lang\\1033.lng";
  const auto written = [&] {
    LoadLanguage(shop.session);
    WriteLanguageFile(shop.session, file);
    return shop.files.text(file);
  };
  shop.tidy();
  shop.files.put(file, std::string(input));
  const std::string before = written();
  Holds(written() == before, "what is written is loaded again");
}

void RunPluginOf(std::string_view input) {
  static FuzzShop shop;
  shop.tidy();
  const std::string folder = "X:\\Pavoline\\Plug-in\\Tool";
  shop.files.put(folder + "\\config.ini", std::string(input));
  for (const char* file : {"\\run.exe", "\\a b\\run.exe", "\\..\\evil.exe", "\\..\\..\\evil.exe"}) {
    shop.files.put(folder + file);
  }
  shop.form.combo2.clear();
  DiscoverPlugins(shop.session, "Plug-in");
  for (const std::string& name : shop.form.combo2.items()) {
    RunPlugin(shop.session, name, {"E:", "S:"});
  }
  for (const auto& start : shop.processes.started) {
    const std::string line = LowerAscii(start.command) + ".exe";
    const std::string program = shop.files.fullPath(line.substr(0, line.find(".exe")));
    Holds(program.starts_with(LowerAscii(folder) + "\\"), "a plug-in stays in its folder");
  }
}

bool HasControls(std::string_view text) {
  return std::ranges::any_of(text, [](unsigned char c) { return c < ' ' && c != '\n'; });
}

// Three names, then the template.
void FillAnswerFile(std::string_view input) {
  static FuzzShop shop;
  shop.tidy();
  shop.files.drop("E:");
  shop.files.folder("E:\\Windows");
  InstallOptions& options = shop.session.options;
  for (std::string* name : {&options.pcUser, &options.computerName, &options.workGroup}) {
    *name = Encode(Decode(TakeLine(input)));
  }
  Plan plan;
  plan.target.drive = "E:";
  plan.answerFile = "D:\\unattend.xml";
  shop.files.put(plan.answerFile, std::string(input));
  WriteAnswerFile(shop.session, plan);
  const std::string text = shop.files.text("E:\\Windows\\Panther\\unattend.xml");
  if (text.empty() || LowerAscii(options.pcUser) == "administrator") return;
  Holds(IsUtf8(text) && text.starts_with("\uFEFF"), "an answer file is UTF-8");
  input.remove_prefix(1);
  Holds(std::ranges::count(text, '<') == std::ranges::count(input, '<') &&
            HasControls(text) <= HasControls(input),
        "names bring no tag and nothing that no XML file holds");
}

void CutName(std::string_view input) {
  static FakeTextServices text;
  const unsigned choice = TakeByte(input);
  const int n = static_cast<int>(choice / 8);
  text.codePage = choice % 2 == 0 ? "CP936" : "CP1252";
  const CutMode mode = choice / 2 % 2 == 0 ? CutMode::kLeaveOut : CutMode::kTakeWhole;
  const std::string name = Encode(Decode(input)), cut = LeftBytes(text, name, n, mode);
  const int all = static_cast<int>(text.toAnsi(name).size());
  const int left = static_cast<int>(text.toAnsi(cut).size());
  if (all <= n) return Holds(cut == name, "a short name stays");
  Holds(left <= n + (mode == CutMode::kTakeWhole ? 1 : 0) && left >= n - 1, "the length is kept");
}

}  // namespace

std::vector<FuzzTarget> FileTargets() {
  return {{"command_line", ReadCommandLine}, {"settings", KeepSettings},
          {"language", KeepLanguage},        {"plugin_config", RunPluginOf},
          {"answer_file", FillAnswerFile},   {"left_bytes", CutName}};
}

}  // namespace pavoline::testing
