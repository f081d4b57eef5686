#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "disk/virtual_disk.h"
#include "engine/wim_apply.h"
#include "fuzz/fuzz.h"
#include "platform/text.h"
#include "postinstall/driver_injection.h"
#include "run/command_words.h"
#include "run/mid_between.h"
#include "source/iso_mount.h"
#include "source/wim_info.h"
#include "support/fake_text.h"

namespace pavoline::testing {
namespace {

using Words = std::vector<std::string>;

bool IsOneOf(std::string_view set, char c) { return set.find(c) != std::string_view::npos; }

// The interpreter's first reading of a line of a batch file, or of what follows "/c": percent
// signs, in quotes as well. Any variable that can be there is, and holds "VALUE".
std::string Expand(std::string_view line, bool batch) {
  std::string result;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const auto end = line[i] == '%' ? line.find('%', i + 1) : i;
    if (end == i) {
      result += line[i];
    } else if (batch && end == i + 1) {
      result += line[i++];
    } else if (end == std::string_view::npos || end == i + 1) {
      result += batch ? "" : "%";
    } else {
      // A name may be followed by a replacement. None has quotes around it or a caret at its end.
      const std::string name = Split(line.substr(i + 1, end - i - 1), ":")[0] + "^";
      const bool known = batch || (name[0] != '"' && !name.ends_with("^^") && name != "^");
      result += known ? "VALUE" : "%";
      if (known) i = end;
    }
  }
  return result;
}

// Its second reading: carets, quotes and signs. One command comes out as its program gets it, the
// file behind ">" put in front; a second one is a broken promise.
std::string Interpret(std::string_view line, bool batch) {
  std::string text, output;
  bool quoted = false;
  const std::string expanded = Expand(line, batch);
  for (std::size_t at = 0; at < expanded.size(); ++at) {
    const char c = expanded[at];
    if (c == '"') quoted = !quoted;
    if (!quoted && c == '^') {
      if (++at < expanded.size()) text += expanded[at];
    } else if (!quoted && c == '>') {
      output = expanded.substr(at + 1);
      Holds(!output.empty() &&
                std::ranges::none_of(output, [](char o) { return IsOneOf(" \t,;=&|<>()^\"", o); }),
            "the output goes into one file and ends the line");
      break;
    } else {
      const bool group = c == '(' && Trim(text).empty();
      Holds(c != '\n' && (quoted || !(group || IsOneOf("&|<", c))), "there is no second command");
      text += c;
    }
  }
  return output + "\n" + text;
}

// A command line as the C runtime takes it to pieces.
Words WordsOf(std::string_view line) {
  Words words;
  bool quoted = false, open = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (!quoted && IsOneOf(" \t\n", line[at])) {
      open = false;
      continue;
    }
    if (!open) words.emplace_back();
    open = true;
    const std::size_t slashes = std::min(line.find_first_not_of('\\', at), line.size()) - at;
    // Backslashes before a quote count half, and an odd one makes it a letter.
    if (slashes > 0 && line.substr(at + slashes).starts_with('"')) {
      words.back().append(slashes / 2, '\\');
      at += slashes - 1;
      if (slashes % 2 != 0) words.back() += line[++at];
    } else if (line[at] == '"') {
      quoted = !quoted;
    } else {
      words.back() += line[at];
    }
  }
  return words;
}

// A path that a volume can hold, as near to the input as it goes.
std::string PathOf(const std::string& drive, std::string_view input) {
  constexpr std::size_t kLongest = 250;
  std::string path = drive;
  for (std::string& name : Split(std::string(input.substr(0, kLongest)) + "\\", "\\")) {
    std::ranges::replace_if(
        name, [](unsigned char c) { return c < ' ' || IsOneOf("\"/:*?<>|~", char(c)); }, '_');
    if (!name.empty()) path += "\\" + name + (IsOneOf(". ", name.back()) ? "_" : "");
  }
  return path;
}

void WriteWords(std::string_view input) {
  for (const std::string& path : {PathOf("D:", input), PathOf("D:", input) + "\\"}) {
    const std::string word = CommandWord(path);
    const Words words = {"log", "tool", path, "next"};
    Holds(WordsOf("log tool " + word + " next") == words, "a path stays one word");
    const std::string line = "tool " + ReplaceAll(word, "%", "%%") + " next >log";
    Holds(WordsOf(Interpret(line, true)) == words, "a path stays one word in a batch file");
    Holds(Interpret("tool " + EscapedForInterpreter(path), false) == "\ntool " + path,
          "an escaped path arrives whole");
  }
}

// The last program that was started, as it gets its line from the interpreter.
std::string LastLine(FuzzShop& shop) {
  const auto& start = shop.processes.started.back();
  const std::string batch = shop.text.fromAnsi(start.script);
  if (!batch.empty()) return Interpret(batch.substr(0, batch.size() - 2), true);
  std::string line = start.command.substr(start.command.find(" /c ") + 4);
  // With "/s" the outermost quotes go.
  if (Contains(start.command, " /s /c ")) line = line.substr(1, line.size() - 2);
  return Interpret(line, false);
}

// The program in a folder of one name works on a path of another.
void WriteLines(std::string_view bytes) {
  static FuzzShop shop;
  const std::string text = Encode(Decode(bytes));
  std::string_view input = text;
  Session& session = shop.session;
  const std::string folder = session.paths.appDir = PathOf("Y:\\a", TakeLine(input));
  const std::string path = PathOf("D:\\a", input);
  const std::string tool = folder + "\\Bin\\wimlib-imagex\\x64\\wimlib-imagex.exe";
  const auto readsAs = [&](const std::string& log, Words words) {
    if (shop.processes.started.empty()) return;  // not to be written in the code page
    words.insert(words.begin(), "C:\\Windows\\temp\\" + log);
    Holds(WordsOf(LastLine(shop)) == words, "a line's words arrive as they are meant");
    shop.tidy();
  };
  for (const char* drive : {"D:", "Y:"}) shop.files.drop(drive);
  for (const std::string& each : {folder, path}) shop.files.folder(each);
  shop.tidy();

  Plan plan;
  plan.target.drive = "E:";
  plan.driverFolder = path;
  ApplyRun apply;
  WimSetup(session, plan, path, apply);
  readsAs("apply.xml", {tool, "apply", path, "1", "E:\\"});
  DriverRun drivers;
  StartDriverInjection(session, plan, drivers);
  readsAs("SetDrv.xml", {"dism.exe", "/image:E:\\", "/Add-Driver", "/Driver:" + path, "/recurse",
                         "/forceunsigned"});
  session.form.combo1.setText(path);
  GetWimInfo(session);
  readsAs("WIMInfo.log", {tool, "info", "--xml", path});
  for (Timer* timer : {&session.form.timer1, &session.form.timer3}) timer->setEnabled(false);
}

void MakeVirtualDisk(std::string_view input) {
  const unsigned choice = TakeByte(input);
  const auto unit = static_cast<SizeUnit>(choice % 3);
  const std::string typed(TakeLine(input)), name(TakeLine(input)), label(input);
  const VirtualDiskSize size = VirtualDiskMegabytes(typed, unit);
  const double meant = std::strtod(typed.c_str(), nullptr) * std::pow(1024, choice % 3);
  Holds(size.fault != SizeFault::kNone ||
            (size.megabytes > 0 && std::abs(meant - size.megabytes) <= 0.5),
        "the size is the one typed");
  if (!IsVirtualDiskName(name)) return;
  const std::string file = WithVirtualDiskExtension("D:\\" + name, VirtualDiskFormat::kVhdx);
  const Words lines =
      Split(CreateScript(file, size.megabytes, VirtualDiskType::kFixed, label, "V"), "\r\n");
  Holds(lines.size() == 7 && lines[1] == "Select vdisk file=\"" + file + "\"" &&
            lines[5] == "Assign letter=V",
        "no name brings a line");
  const std::string shown = MidBetween(lines[4], " LABEL=", " quick", true);
  const bool quoted = shown.starts_with('"') && shown.find('"', 1) == shown.size() - 1;
  Holds(quoted || shown.find_first_of(" \"") == std::string::npos, "a label stays one word");
}

}  // namespace

std::vector<FuzzTarget> CommandTargets() {
  return {{"command_words", WriteWords},
          {"batch_lines", WriteLines},
          {"virtual_disk", MakeVirtualDisk}};
}

}  // namespace pavoline::testing
