// Command line of the driver: press PROGRAM VERB ARGUMENT... ; run it without arguments for the
// list. A control is its number; results go to standard output, the exit code tells whether it
// worked.

#include <cstdio>
#include <cstdlib>
#include <map>

#include "bridge/unix_side.h"
#include "driver/dialogs.h"
#include "driver/process.h"
#include "driver/window.h"

namespace {

using Arguments = std::vector<std::string>;
using Action = std::function<bool(const std::string& program, const Arguments& arguments)>;

struct Verb {
  size_t arguments;  // at least
  const char* help;
  Action action;
};

bool print(const std::string& text) {
  printf("%s\n", text.c_str());
  return true;
}

int number(const std::string& text) { return static_cast<int>(strtol(text.c_str(), nullptr, 0)); }

// The control of this number in any window of the program.
bench::Window control(const std::string& program, const std::string& id) {
  for (const bench::Window& window : bench::windowsOf(program)) {
    if (!window.visible()) continue;
    if (const bench::Window found = window.child(number(id))) return found;
  }
  fprintf(stderr, "no control %s\n", id.c_str());
  return {};
}

bench::Window mainWindow(const std::string& program) { return bench::findWindow(program, "", ""); }

bool withControl(const std::string& program, const std::string& id,
                 const std::function<void(const bench::Window&)>& action) {
  const bench::Window found = control(program, id);
  if (found) action(found);
  return static_cast<bool>(found);
}

bool printMessage(const std::string& program, int milliseconds, int button) {
  const auto message = bench::waitForMessage(program, milliseconds);
  if (!message) return false;
  print(message->title + "\n" + message->text);
  return bench::answer(*message, button);
}

bool waitForText(const std::string& program, const Arguments& arguments) {
  return bench::waitUntil(number(arguments[2]), [&] {
    for (const bench::Window& window : bench::windowsOf(program)) {
      const bench::Window found = window.child(number(arguments[0]));
      if (found && found.text().find(arguments[1]) != std::string::npos) return true;
    }
    return false;
  });
}

const std::map<std::string, Verb>& verbs() {
  using bench::Window;
  static const std::map<std::string, Verb> table = {
      {"dump", {0, "", [](auto& p, auto&) { return print(bench::dumpWindows(p)); }}},
      {"text",
       {1, "ID",
        [](auto& p, auto& a) {
          return withControl(p, a[0], [](const Window& w) { print(w.text()); });
        }}},
      {"enter",
       {2, "ID TEXT",
        [](auto& p, auto& a) {
          return withControl(p, a[0], [&](const Window& w) { w.enterText(a[1]); });
        }}},
      {"type",
       {2, "ID TEXT",
        [](auto& p, auto& a) {
          return withControl(p, a[0], [&](const Window& w) { w.typeText(a[1]); });
        }}},
      {"click",
       {1, "ID",
        [](auto& p, auto& a) { return withControl(p, a[0], [](const Window& w) { w.click(); }); }}},
      {"tick",
       {2, "ID 0|1",
        [](auto& p, auto& a) {
          return withControl(p, a[0], [&](const Window& w) { w.tick(number(a[1]) != 0); });
        }}},
      {"select",
       {2, "ID INDEX",
        [](auto& p, auto& a) {
          return withControl(p, a[0], [&](const Window& w) { w.select(number(a[1])); });
        }}},
      {"pick",
       {2, "ID ROW (double click in a list)",
        [](auto& p, auto& a) {
          return withControl(p, a[0], [&](const Window& w) { w.doubleClickRow(number(a[1])); });
        }}},
      {"key",
       {1, "VIRTUAL-KEY",
        [](auto& p, auto& a) {
          mainWindow(p).key(number(a[0]));
          return true;
        }}},
      {"chord",
       {1, "VIRTUAL-KEY... (held together)",
        [](auto& p, auto& a) {
          std::vector<int> keys;
          for (const std::string& key : a) keys.push_back(number(key));
          mainWindow(p).chord(keys);
          return true;
        }}},
      {"menu",
       {1, "ID (system command)",
        [](auto& p, auto& a) {
          mainWindow(p).systemCommand(number(a[0]));
          return true;
        }}},
      {"drop",
       {2, "ID FILE...",
        [](auto& p, auto& a) {
          return withControl(p, a[0], [&](const Window& w) {
            w.dropFiles({a.begin() + 1, a.end()});
          });
        }}},
      {"file",
       {1, "PATH (answers the file chooser; empty cancels)",
        [](auto& p, auto& a) { return bench::answerFileDialog(p, a[0], 5000); }}},
      {"ok",
       {1, "MS (answers a message box)",
        [](auto& p, auto& a) { return printMessage(p, number(a[0]), IDOK); }}},
      {"cancel",
       {1, "MS", [](auto& p, auto& a) { return printMessage(p, number(a[0]), IDCANCEL); }}},
      {"wait",
       {1, "MS (until a window shows)",
        [](auto& p, auto& a) {
          return bench::waitUntil(number(a[0]), [&] { return static_cast<bool>(mainWindow(p)); });
        }}},
      {"wait-text", {3, "ID PART MS", waitForText}},
      {"wait-end",
       {1, "MS (until the program has ended)",
        [](auto& p, auto& a) {
          return bench::waitUntil(number(a[0]), [&] { return !bench::isRunning(p); });
        }}},
      {"close",
       {0, "",
        [](auto& p, auto&) {
          mainWindow(p).close();
          return true;
        }}},
      {"kill", {0, "", [](auto& p, auto&) { return bench::endProcesses(p) > 0; }}},
  };
  return table;
}

int usage() {
  fprintf(stderr, "press PROGRAM VERB ARGUMENT...\n");
  for (const auto& [name, verb] : verbs()) fprintf(stderr, "  %s %s\n", name.c_str(), verb.help);
  return 2;
}

}  // namespace

int wmain(int count, wchar_t** values) {
  Arguments arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(bench::toUtf8(values[i]));
  if (arguments.size() < 2) return usage();
  const auto verb = verbs().find(arguments[1]);
  if (verb == verbs().end() || arguments.size() - 2 < verb->second.arguments) return usage();
  return verb->second.action(arguments[0], {arguments.begin() + 2, arguments.end()}) ? 0 : 1;
}
