// Command line of the driver: press PROGRAM VERB ARGUMENT... ; run it without arguments for the
// list. A control is its number; results go to standard output, the exit code tells whether it
// worked.

#include <cstdio>
#include <cstdlib>

#include "bridge/unix_side.h"
#include "driver/dialogs.h"
#include "driver/process.h"
#include "driver/window.h"

namespace {

using bench::Window;
using Arguments = std::vector<std::string>;

int Number(const std::string& text) { return static_cast<int>(strtol(text.c_str(), nullptr, 0)); }

bool Print(const std::string& text) {
  printf("%s\n", text.c_str());
  return true;
}

// What is done with one control, whose number is the first argument.
struct ControlVerb {
  const char* name;
  size_t arguments;  // besides the number, at least
  const char* help;
  void (*act)(const Window& control, const Arguments& arguments);
};

const ControlVerb kControlVerbs[] = {
    {"text", 0, "ID", [](auto& control, auto&) { Print(control.text()); }},
    {"enter", 1, "ID TEXT", [](auto& control, auto& a) { control.enterText(a[0]); }},
    {"type", 1, "ID TEXT", [](auto& control, auto& a) { control.typeText(a[0]); }},
    {"click", 0, "ID", [](auto& control, auto&) { control.click(); }},
    {"tick", 1, "ID 0|1", [](auto& control, auto& a) { control.tick(Number(a[0]) != 0); }},
    {"select", 1, "ID INDEX", [](auto& control, auto& a) { control.select(Number(a[0])); }},
    {"pick", 1, "ID ROW (double click in a list)",
     [](auto& control, auto& a) { control.doubleClickRow(Number(a[0])); }},
    {"drop", 1, "ID FILE...", [](auto& control, auto& a) { control.dropFiles(a); }},
};

// The control of this number in any window of the program.
Window FindControl(const std::string& program, const std::string& id) {
  for (const Window& window : bench::WindowsOf(program)) {
    if (!window.visible()) continue;
    if (const Window found = window.child(Number(id))) return found;
  }
  fprintf(stderr, "no control %s\n", id.c_str());
  return {};
}

bool PressControl(const ControlVerb& verb, const std::string& program, const Arguments& arguments) {
  const Window control = FindControl(program, arguments[0]);
  if (control) verb.act(control, {arguments.begin() + 1, arguments.end()});
  return static_cast<bool>(control);
}

// What is done with the program or its main window.
struct ProgramVerb {
  const char* name;
  size_t arguments;  // at least
  const char* help;
  bool (*act)(const std::string& program, const Arguments& arguments);
};

Window MainWindow(const std::string& program) { return bench::TopWindow(program, "", ""); }

bool PressKey(const std::string& program, const Arguments& arguments) {
  MainWindow(program).key(Number(arguments[0]));
  return true;
}

bool PressChord(const std::string& program, const Arguments& arguments) {
  std::vector<int> keys;
  for (const std::string& key : arguments) keys.push_back(Number(key));
  MainWindow(program).chord(keys);
  return true;
}

bool ChooseFromMenu(const std::string& program, const Arguments& arguments) {
  MainWindow(program).systemCommand(Number(arguments[0]));
  return true;
}

bool AskToClose(const std::string& program, const Arguments&) {
  MainWindow(program).close();
  return true;
}

template <int button>
bool AnswerMessage(const std::string& program, const Arguments& arguments) {
  const auto message = bench::WaitForMessage(program, Number(arguments[0]));
  if (!message) return false;
  Print(message->title + "\n" + message->text);
  return bench::Answer(*message, button);
}

bool WaitForText(const std::string& program, const Arguments& arguments) {
  return bench::WaitUntil(Number(arguments[2]), [&] {
    for (const Window& window : bench::WindowsOf(program)) {
      const Window found = window.child(Number(arguments[0]));
      if (found && found.text().find(arguments[1]) != std::string::npos) return true;
    }
    return false;
  });
}

const ProgramVerb kProgramVerbs[] = {
    {"dump", 0, "", [](auto& program, auto&) { return Print(bench::DumpWindows(program)); }},
    {"key", 1, "VIRTUAL-KEY", PressKey},
    {"chord", 1, "VIRTUAL-KEY... (held together)", PressChord},
    {"menu", 1, "ID (system command)", ChooseFromMenu},
    {"file", 1, "PATH (answers the file chooser; empty cancels)",
     [](auto& program, auto& a) { return bench::AnswerFileDialog(program, a[0], 5000); }},
    {"ok", 1, "MS (answers a message box)", AnswerMessage<IDOK>},
    {"cancel", 1, "MS", AnswerMessage<IDCANCEL>},
    {"wait", 1, "MS (until a window shows)",
     [](auto& program, auto& a) {
       return bench::WaitUntil(Number(a[0]),
                               [&] { return static_cast<bool>(MainWindow(program)); });
     }},
    {"wait-text", 3, "ID PART MS", WaitForText},
    {"wait-end", 1, "MS (until the program has ended)",
     [](auto& program, auto& a) {
       return bench::WaitUntil(Number(a[0]), [&] { return !bench::IsRunning(program); });
     }},
    {"close", 0, "", AskToClose},
    {"kill", 0, "", [](auto& program, auto&) { return bench::EndProcesses(program) > 0; }},
};

int Usage() {
  fprintf(stderr, "press PROGRAM VERB ARGUMENT...\n");
  for (const ControlVerb& verb : kControlVerbs) fprintf(stderr, "  %s %s\n", verb.name, verb.help);
  for (const ProgramVerb& verb : kProgramVerbs) fprintf(stderr, "  %s %s\n", verb.name, verb.help);
  return 2;
}

int Run(const std::string& program, const std::string& name, const Arguments& arguments) {
  for (const ControlVerb& verb : kControlVerbs) {
    if (name != verb.name || arguments.size() < verb.arguments + 1) continue;
    return PressControl(verb, program, arguments) ? 0 : 1;
  }
  for (const ProgramVerb& verb : kProgramVerbs) {
    if (name != verb.name || arguments.size() < verb.arguments) continue;
    return verb.act(program, arguments) ? 0 : 1;
  }
  return Usage();
}

}  // namespace

int wmain(int count, wchar_t** values) {
  Arguments arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(bench::ToUtf8(values[i]));
  if (arguments.size() < 2) return Usage();
  return Run(arguments[0], arguments[1], {arguments.begin() + 2, arguments.end()});
}
