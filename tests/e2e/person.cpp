#include "person.h"

#include <stdexcept>

#include "stage.h"

namespace e2e {

using bench::Window;
using namespace pavoline;

namespace {

std::string WithoutMarks(std::string text) {
  std::erase(text, '&');
  return text;
}

std::string InOneLine(const std::string& text) {
  std::string line;
  for (const char c : text) {
    if (c != '\r' && c != '\n')
      line += c;
    else if (!line.empty() && line.back() != ' ')
      line += ' ';
  }
  return line;
}

}  // namespace

Person::Person(const std::string& switches)
    : process_("\"" + std::string(kAppFolder) + "\\Pavoline.exe\" /lng:1033 " + switches,
               kAppFolder) {
  if (!process_.started()) {
    throw std::runtime_error("the program did not start: " + std::to_string(GetLastError()));
  }
  // An unattended run may have come to its end before it was seen.
  const bool began =
      Soon([&] { return !main.text(kInstallPartition).text().empty() || !process_.running(); });
  if (!began) throw std::runtime_error("the program lists no partitions");
}

Person::~Person() { process_.end(); }

bool Person::idle() const {
  const Window start = main.command(kStart);
  return start.enabled() && WithoutMarks(start.text()) == WithoutMarks(Text(kTextStart));
}

bool Person::busy() const { return main.command(kStart).text() == Text(kTextBusy); }

bool Person::leftInPeace() const {
  if (!Soon([&] { return idle(); })) return false;
  return !bench::WaitForMessage(main.program(), 500);
}

bool Person::gone(int milliseconds) const { return process_.exitCode(milliseconds).has_value(); }

int Person::exitCode(int milliseconds) const {
  const auto code = process_.exitCode(milliseconds);
  return code ? static_cast<int>(*code) : -1;
}

bool Person::opensImage(const std::string& path) const {
  main.source().enterText(path);
  return Soon([&] { return main.source().enabled() && !main.editions().items().empty(); });
}

void Person::entersPartitions(const std::string& install, const std::string& boot) const {
  main.text(kInstallPartition).enterText(install);
  main.text(kBootPartition).enterText(boot);
}

void Person::startsAndConfirms() const {
  main.command(kStart).click();
  EXPECT_THAT(hears(IDOK), testing::HasSubstr(Text(kTextConfirmTail)));
}

bool Person::seesProgress(int percent) const {
  return Soon([&] { return main.progressBar().progress() >= percent; });
}

std::string Person::hears(int button) const {
  const auto message = bench::WaitForMessage(main.program(), kPatience);
  if (!message) return "(silence)";
  EXPECT_TRUE(bench::Answer(*message, button));
  return InOneLine(message->text);
}

Window Person::sees(const std::string& form) const {
  Window window;
  EXPECT_TRUE(Soon([&] {
    window = bench::TopWindow(main.program(), "Pavoline." + form, "");
    return window && window.enabled();
  })) << form;
  return window;
}

void Person::presses(const Window& window, const std::string& button) const {
  EXPECT_TRUE(Soon([&] { return window.childWithText(button).enabled(); })) << button;
  window.childWithText(button).click();
}

}  // namespace e2e
