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

int number(const std::string& text) { return static_cast<int>(strtol(text.c_str(), nullptr, 0)); }

bool print(const std::string& text) {
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
    {"text", 0, "ID", [](auto& control, auto&) { print(control.text()); }},
    {"enter", 1, "ID TEXT", [](auto& control, auto& a) { control.enterText(a[0]); }},
    {"type", 1, "ID TEXT", [](auto& control, auto& a) { control.typeText(a[0]); }},
    {"click", 0, "ID", [](auto& control, auto&) { control.click(); }},
    {"tick", 1, "ID 0|1", [](auto& control, auto& a) { control.tick(number(a[0]) != 0); }},
    {"select", 1, "ID INDEX", [](auto& control, auto& a) { control.select(number(a[0])); }},
    {"pick", 1, "ID ROW (double click in a list)",
     [](auto& control, auto& a) { control.doubleClickRow(number(a[0])); }},
    {"drop", 1, "ID FILE...", [](auto& control, auto& a) { control.dropFiles(a); }},
};

// The control of this number in any window of the program.
Window findControl(const std::string& program, const std::string& id) {
  for (const Window& window : bench::windowsOf(program)) {
    if (!window.visible()) continue;
    if (const Window found = window.child(number(id))) return found;
  }
  fprintf(stderr, "no control %s\n", id.c_str());
  return {};
}

bool pressControl(const ControlVerb& verb, const std::string& program, const Arguments& arguments) {
  const Window control = findControl(program, arguments[0]);
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

Window mainWindow(const std::string& program) { return bench::findWindow(program, "", ""); }

bool pressKey(const std::string& program, const Arguments& arguments) {
  mainWindow(program).key(number(arguments[0]));
  return true;
}

bool pressChord(const std::string& program, const Arguments& arguments) {
  std::vector<int> keys;
  for (const std::string& key : arguments) keys.push_back(number(key));
  mainWindow(program).chord(keys);
  return true;
}

bool chooseFromMenu(const std::string& program, const Arguments& arguments) {
  mainWindow(program).systemCommand(number(arguments[0]));
  return true;
}

bool closeWindow(const std::string& program, const Arguments&) {
  mainWindow(program).close();
  return true;
}

template <int button>
bool answerMessage(const std::string& program, const Arguments& arguments) {
  const auto message = bench::waitForMessage(program, number(arguments[0]));
  if (!message) return false;
  print(message->title + "\n" + message->text);
  return bench::answer(*message, button);
}

bool waitForText(const std::string& program, const Arguments& arguments) {
  return bench::waitUntil(number(arguments[2]), [&] {
    for (const Window& window : bench::windowsOf(program)) {
      const Window found = window.child(number(arguments[0]));
      if (found && found.text().find(arguments[1]) != std::string::npos) return true;
    }
    return false;
  });
}

const ProgramVerb kProgramVerbs[] = {
    {"dump", 0, "", [](auto& program, auto&) { return print(bench::dumpWindows(program)); }},
    {"key", 1, "VIRTUAL-KEY", pressKey},
    {"chord", 1, "VIRTUAL-KEY... (held together)", pressChord},
    {"menu", 1, "ID (system command)", chooseFromMenu},
    {"file", 1, "PATH (answers the file chooser; empty cancels)",
     [](auto& program, auto& a) { return bench::answerFileDialog(program, a[0], 5000); }},
    {"ok", 1, "MS (answers a message box)", answerMessage<IDOK>},
    {"cancel", 1, "MS", answerMessage<IDCANCEL>},
    {"wait", 1, "MS (until a window shows)",
     [](auto& program, auto& a) {
       return bench::waitUntil(number(a[0]),
                               [&] { return static_cast<bool>(mainWindow(program)); });
     }},
    {"wait-text", 3, "ID PART MS", waitForText},
    {"wait-end", 1, "MS (until the program has ended)",
     [](auto& program, auto& a) {
       return bench::waitUntil(number(a[0]), [&] { return !bench::isRunning(program); });
     }},
    {"close", 0, "", closeWindow},
    {"kill", 0, "", [](auto& program, auto&) { return bench::endProcesses(program) > 0; }},
};

int usage() {
  fprintf(stderr, "press PROGRAM VERB ARGUMENT...\n");
  for (const ControlVerb& verb : kControlVerbs) fprintf(stderr, "  %s %s\n", verb.name, verb.help);
  for (const ProgramVerb& verb : kProgramVerbs) fprintf(stderr, "  %s %s\n", verb.name, verb.help);
  return 2;
}

int run(const std::string& program, const std::string& name, const Arguments& arguments) {
  for (const ControlVerb& verb : kControlVerbs) {
    if (name != verb.name || arguments.size() < verb.arguments + 1) continue;
    return pressControl(verb, program, arguments) ? 0 : 1;
  }
  for (const ProgramVerb& verb : kProgramVerbs) {
    if (name != verb.name || arguments.size() < verb.arguments) continue;
    return verb.act(program, arguments) ? 0 : 1;
  }
  return usage();
}

}  // namespace

int wmain(int count, wchar_t** values) {
  Arguments arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(bench::toUtf8(values[i]));
  if (arguments.size() < 2) return usage();
  return run(arguments[0], arguments[1], {arguments.begin() + 2, arguments.end()});
}
