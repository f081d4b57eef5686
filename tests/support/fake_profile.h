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

  ProfileSection readSection(const std::string& file, const std::string& section,
                             int bufferBytes) override;
  bool write(const std::string& file, const std::string& section, const std::string& key,
             const std::string& value) override;

 private:
  std::vector<std::string>& lines(const std::string& file);

  FakeFiles& files_;
  FakeTextServices& text_;
  std::string readBytes_, readCodePage_;  // what `readLines_` were made of
  std::vector<std::string> readLines_;
};

}  // namespace pavoline::testing
