#pragma once

#include <functional>

#include "form/form1.h"
#include "session/session.h"
#include "support/fake_platform.h"

namespace pavoline::testing {

// The pre-installation environment on such a machine with the program in it, ready to be used:
// the program lies in X:\Pavoline, the system in C:\Windows, D: and E: are empty fixed drives, and
// each text is its name in form/text_list.h with its placeholders behind ("BootMissing %bp%").
struct Workshop : FakePlatform {
  Workshop();

  Form1 form;
  Session session{platform, form};

  void run(long ms) { time.advance(ms); }
  // False when the time went by (an hour at most) and it never came true.
  bool runUntil(const std::function<bool()>& reached, long limitMs = 3600 * 1000);

  // A split image of the imaging program: "D:\\a" makes a.swm, a2.swm and a3.swm.
  void putSplitImage(const std::string& path);

  bool said(const std::string& partOfMessage) const;
  std::vector<std::string> heard() const;  // "text|title|flags" of every message
};

}  // namespace pavoline::testing
