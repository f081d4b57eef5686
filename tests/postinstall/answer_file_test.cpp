#include "postinstall/answer_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/installer.h"

namespace pavoline::testing {

using namespace ::testing;

const std::string kBom = "\xEF\xBB\xBF";
const std::string kTarget = "E:\\Windows\\Panther\\unattend.xml";
const std::string kNames =
    "[Pavoline] %Pavoline-Arch% %Pavoline-User% %Pavoline-PC% %Pavoline-Group% %Pavoline-Lang%";

struct AnswerShop : InstallShop {
  explicit AnswerShop(const std::string& content = kBom + kNames) {
    applied();
    plan.answerFile = "X:\\Pavoline\\Bin\\unattend\\unattend.xml";
    files.put(plan.answerFile, content);
  }
  std::string written() {
    WriteAnswerFile(session, plan);
    return files.text(kTarget);
  }
};

TEST(AnswerFile, FillsInDefaultsAndKeepsAllButTheComputerName) {
  for (const auto& [random, letter] :
       {std::pair{0.0, "A"}, {0.019, "A"}, {0.021, "B"}, {0.06, "B"}, {0.061, "C"}, {0.99, "Z"}}) {
    AnswerShop w;
    w.environment.randoms = {random, 0.5};
    EXPECT_EQ(w.written(),
              kBom + "[Pavoline] amd64 PAVO PAVO-20240506" + letter + "N WORKGROUP de-DE")
        << random;
    const InstallOptions& kept = w.session.options;
    EXPECT_EQ(kept.pcUser + kept.workGroup + kept.computerName, "PAVOWORKGROUP");
    EXPECT_EQ(w.environment.reseeds, 1);
    EXPECT_EQ(w.form.status.text(), "WritingAnswerFile");
  }
}

TEST(AnswerFile, TakesTheNamesAsTextSafeInXml) {
  AnswerShop w;
  w.files.drop("E:\\Windows\\SysWOW64");
  w.session.options.pcUser = "R&D <\xC3\xA9>";
  w.session.options.computerName = "PC-1";
  w.session.options.workGroup = "OFFICE";
  w.plan.language.clear();  // as of a Ghost image
  w.session.fallbackLanguage = "ja-JP";
  EXPECT_EQ(w.written(), kBom + "[Pavoline] x86 R&amp;D &lt;\xC3\xA9&gt; PC-1 OFFICE ja-JP");
  EXPECT_EQ(AnswerShop("\xC3\xA9t\xC3\xA9").written(), kBom + "t\xC3\xA9") << "its first character";
}

TEST(AnswerFile, TheAdministratorGetsTheBuiltInOne) {
  for (const auto& [user, text] :
       {std::pair{"admin", "[Pavoline]"}, {"Administrator", "[pavoline]"}}) {
    AnswerShop w(std::string("?") + text);
    w.session.options.pcUser = user;
    EXPECT_EQ(w.written(), kBom + text);
  }
  AnswerShop w;
  w.session.options.pcUser = "ADMINistrator";
  const std::string text = w.written();
  EXPECT_THAT(text, HasSubstr("<Username>Administrator</Username>"));
  EXPECT_THAT(text, HasSubstr("<JoinWorkgroup>WORKGROUP</JoinWorkgroup>"));
  EXPECT_THAT(text, Not(HasSubstr("%Pavoline-")));
}

TEST(AnswerFile, WritesNothingThatIsNoText) {
  for (const std::string& content :
       {std::string(), kBom, std::string("\xFF\xFE<\0a\0", 6), std::string("<\0a\0", 4),
        std::string("\xE9t\xE9"), std::string("x\xE4\xB8"), std::string("x\x80")}) {
    AnswerShop w(content);
    w.written();
    EXPECT_FALSE(w.files.exists(kTarget)) << content;
    EXPECT_TRUE(w.dialogs.messages.empty());
  }
}

TEST(AnswerFile, TheImagesOwnStaysAndAFullVolumeIsSaid) {
  AnswerShop own;
  own.files.put(kTarget, "the image's own");
  EXPECT_EQ(own.written(), "the image's own");
  EXPECT_NE(own.form.status.text(), "WritingAnswerFile");
  AnswerShop full;
  full.files.noRoom = "E:";
  full.written();
  EXPECT_FALSE(full.files.exists(kTarget));
  EXPECT_TRUE(full.said("CannotWrite " + kTarget));
}

}  // namespace pavoline::testing
