#pragma once

#include <string>

#include "platform/text.h"
#include "source/image_source.h"
#include "support/workshop.h"

namespace pavoline::testing {

// A workshop whose source box reacts as in the program, with an imaging program that takes 100 ms
// and describes every image file as `editions`.
struct SourceShop : Workshop {
  SourceShop() {
    form.combo1.onChange = [this] { SourceChanged(session); };
    processes.onStart("info --xml", [this](ToolRun& run) {
      enabledDuringRun = form.combo1.enabled();
      std::string xml = editions.empty() ? "" : "\xFF\xFE";
      for (const std::string& name : Split(editions, ",")) {
        xml += text.toUtf16("<IMAGE INDEX=\"\"><ARCH>9</ARCH><NAME>" + name + "</NAME></IMAGE>");
      }
      run.print(100, xml);
    });
  }

  std::string editions = "Home,Pro N,Pro";
  bool enabledDuringRun = true;

  const std::string& source() { return form.combo1.text(); }
  std::string edition() { return form.combo[kEditions].text(); }
  std::size_t editionCount() { return form.combo[kEditions].items().size(); }
};

}  // namespace pavoline::testing
