#pragma once

#include <string>
#include <vector>

#include "platform/profile.h"
#include "support/fake_files.h"
#include "support/fake_text.h"

namespace pavoline::testing {

// INI files in the fake drive tree.
struct FakeProfile : Profile {
  FakeProfile(FakeFiles& files, FakeTextServices& text) : files_(files), text_(text) {}

  std::string read(const std::string& file, const std::string& section, const std::string& key,
                   int bufferBytes) override;
  bool write(const std::string& file, const std::string& section, const std::string& key,
             const std::string& value) override;

 private:
  const std::vector<std::string>& lines(const std::string& file);
  std::string cut(const std::string& value, int bytes);

  FakeFiles& files_;
  FakeTextServices& text_;
  std::string readBytes_, readCodePage_;  // what `readLines_` were made of
  std::vector<std::string> readLines_;
};

}  // namespace pavoline::testing
