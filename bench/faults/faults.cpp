// Tries rows of the table of faults: faults TABLE RESULTS ROW... . A row is its number, from 1.
// Each gives one line in the form of the table's, with what was seen, and the seconds behind a
// tabulator.

#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "bridge/unix_side.h"
#include "driver/drive_files.h"
#include "faults/watch.h"

namespace {

std::vector<std::string> FieldsOf(const std::string& line) {
  std::vector<std::string> fields(1);
  for (const char c : line) {
    if (c == '|')
      fields.emplace_back();
    else
      fields.back() += c;
  }
  for (std::string& field : fields) {
    while (!field.empty() && field.back() == ' ') field.pop_back();
    field.erase(0, field.find_first_not_of(' '));
  }
  return fields;
}

std::vector<std::vector<std::string>> RowsOf(const std::string& unixFile) {
  std::vector<std::vector<std::string>> rows;
  std::istringstream lines(bench::Read(bench::ToUtf8(bench::WindowsForm(unixFile))));
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line[0] == '#') continue;
    rows.push_back(FieldsOf(line));
    rows.back().resize(8);
  }
  return rows;
}

std::string ResultOf(const std::vector<std::string>& fields) {
  faults::Case row;
  row.part = fields[0];
  row.name = fields[1];
  row.setup = fields[2];
  row.attended = fields[3] == "person";
  faults::Seen seen;
  try {
    seen = faults::TryCase(row);
  } catch (const std::exception& problem) {
    seen.verdict = std::string("not tried: ") + problem.what();
  }
  try {
    faults::Clear();
  } catch (const std::exception&) {
  }
  std::string told = seen.messages.empty() ? "nothing" : seen.messages;
  if (!seen.verdict.empty()) told = "FAULT: " + seen.verdict + ": " + told;
  char seconds[16];
  snprintf(seconds, sizeof seconds, "\t%.0f", seen.seconds);
  return fields[0] + " | " + fields[1] + " | " + fields[2] + " | " + fields[3] + " | " + told +
         " | " + seen.exit + " | " + (seen.recorded.empty() ? "nothing" : seen.recorded) + " | " +
         seen.left + seconds + "\n";
}

}  // namespace

int main(int count, char** words) {
  if (count < 4) return 2;
  const auto rows = RowsOf(words[1]);
  for (int i = 3; i < count; ++i) {
    const std::string line = ResultOf(rows.at(static_cast<size_t>(atoi(words[i])) - 1));
    FILE* results = _wfopen(bench::WindowsForm(words[2]).c_str(), L"ab");
    if (!results) return 1;
    fputs(line.c_str(), results);
    fclose(results);
  }
  return 0;
}
