#include <algorithm>

#include "disk/partitions.h"
#include "engine/apply_log.h"
#include "engine/ghost_restore.h"
#include "fuzz/fuzz.h"
#include "platform/text.h"
#include "postinstall/driver_log.h"
#include "run/command_runner.h"
#include "run/text_mode_repair.h"
#include "run/tool_files.h"
#include "source/iso_mount.h"
#include "source/wim_info.h"

namespace pavoline::testing {
namespace {

void ReadApplyLog(std::string_view input) {
  ApplyLog whole, pieces;
  whole.feed(input);
  for (std::string_view rest = input; !rest.empty();) {
    const std::size_t cut = 1 + static_cast<unsigned char>(rest.front()) % 61;
    pieces.feed(rest.substr(0, cut));
    rest.remove_prefix(std::min(cut, rest.size()));
  }
  ApplyProgress progress;
  for (int look = 0; look < 4; ++look) {
    const ApplyStep a = ParseApplyLog(whole, progress), b = ParseApplyLog(pieces, progress);
    Holds(a.status == b.status && a.shown == b.shown && a.finished == b.finished &&
              a.toolNeeded == b.toolNeeded && a.shown.value_or(0) <= 100,
          "a log tells the same in whatever pieces it comes");
    progress = a.progress;
  }
}

void ReadDriverLog(std::string_view input) {
  const DriverStep step = ParseDriverLog(input);
  const DriverStep later = ParseDriverLog(std::string(input) + "\tInstalling 1 of 2 - half");
  Holds(step.kind == later.kind && step.done == later.done && step.total == later.total,
        "a half-written line changes nothing");
}

void ReadGhostTitle(std::string_view input) {
  struct GhostShop : FuzzShop {
    GhostShop() {
      files.put("X:\\Ghost.exe");
      processes.onStart("Ghost.exe", [](ToolRun& tool) { tool.neverEnds(); });
      run.tool = StartProgram(session, "X:\\Ghost.exe", {"ghost", "ghost.exe", ""});
      run.window = windows.open("GhostScreen", "");
    }
    GhostRun run;
  };
  static GhostShop shop;
  shop.windows.at(shop.run.window).title = input;
  Holds(GhostTick(shop.session, Plan(), shop.run).kind == StepResult::kWaits,
        "no title ends a restore whose program runs");
}

void ReadMountLog(std::string_view input) {
  const std::string drive = MountedDrive(std::string(input));
  Holds(drive.empty() || (drive.size() == 2 && drive >= "A:" && drive <= "z:" && drive[1] == ':'),
        "what goes into a command is a drive");
}

void ReadWimInfo(std::string_view input) {
  for (const WimImageInfo& image : ParseWimInfo(std::string(input))) {
    Holds(image.archText.size() < 2048, "no text grows with the number of images");
  }
  std::string name(input);
  for (const auto& [character, entity] :
       {std::pair{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}}) {
    name = ReplaceAll(name, character, entity);
  }
  const auto one = ParseWimInfo("<IMAGE INDEX=\"1\"><NAME>" + name + "</NAME></IMAGE>");
  Holds(one.size() == 1 && one[0].name == input, "a name is read as it was written");
}

void RepairNames(std::string_view input) {
  const std::string raw(input), repaired = RepairTextMode(raw);
  Holds(repaired == raw || repaired == ReplaceAll(raw, "\r\n", "\n"), "nothing else is taken out");
  std::string text = "\xFF\xFE";
  const auto add = [&](std::string_view ascii) {
    for (const char c : ascii) text += {c, '\0'};
  };
  add("<WIM><NAME>");
  for (std::size_t i = 0; i + 1 < input.size(); i += 2) {
    const unsigned low = static_cast<unsigned char>(input[i]);
    const unsigned high = static_cast<unsigned char>(input[i + 1]);
    // Tags, and rare letters half of which looks like one; what is no character of any script.
    const bool tag = high == '<' || (high == 0 && (low == '<' || low == '>' || low < ' '));
    if (!tag && (high != 0x0A || low != 0x0D)) text += input.substr(i, 2);
  }
  add("</NAME></WIM>\n");
  Holds(RepairTextMode(ReplaceAll(text, "\n", "\r\n")) == text, "what text mode inserted goes");
}

void ReadToolFile(std::string_view input) {
  static FuzzShop shop;
  shop.files.put("D:\\log", std::string(input));
  const std::string words = LastWords(shop.session, "D:\\log");
  Holds(IsUtf8(words) && words.size() < 1000, "last words are short, their letters whole");
  Holds(IsUtf8(ReadUnicodeFile(shop.session, "D:\\log")), "a file is read as UTF-8");
}

// A machine with a tool that prints the input.
struct PrintingShop : FuzzShop {
  PrintingShop(const std::string& program) {
    files.put("X:\\Pavoline\\Bin\\" + program);
    processes.onStart(program, [this](ToolRun& run) { run.print(0, input); });
  }
  void prints(std::string_view text) {
    tidy();
    input = text;
  }
  std::string input;
};

void ListEditions(std::string_view input) {
  static PrintingShop shop("wimlib-imagex\\x64\\wimlib-imagex.exe");
  shop.prints(input);
  for (ComboBox& list : shop.form.combo) list.clear();
  shop.session.editions.clear();
  shop.session.options.defaultSysEdition = "Pro,Home";
  GetWimInfo(shop.session);
  const ComboBox& list = shop.form.combo[kEditions];
  Holds(list.items().size() == shop.session.editions.size() &&
            list.items().size() == shop.form.combo[kEditionDetails].items().size() &&
            list.items().empty() == (list.selected() < 0),
        "the lists keep step, and one edition is chosen");
}

void ListPartitions(std::string_view input) {
  static PrintingShop shop("CxDir\\x64\\CxDir.exe");
  shop.prints(input);
  RefreshPartitions(shop.session);
  for (const PartitionEntry& row : shop.session.installRows) {
    Holds(!row.drive.empty(), "a row has a drive");
    Holds(!DescribeVolume(shop.session, row.drive).empty(), "a row's volume is known");
  }
}

}  // namespace

std::vector<FuzzTarget> LogTargets() {
  return {{"apply_log", ReadApplyLog},       {"driver_log", ReadDriverLog},
          {"ghost_title", ReadGhostTitle},   {"mount_log", ReadMountLog},
          {"wim_info", ReadWimInfo},         {"text_mode", RepairNames},
          {"tool_file", ReadToolFile},       {"edition_list", ListEditions},
          {"partition_list", ListPartitions}};
}

}  // namespace pavoline::testing
