#include "startup/error_report.h"

#include <gtest/gtest.h>

#include "tests/support/fakes.h"

namespace corvanel {
namespace {

TEST(ErrorReportTest, TellsPlaceDescriptionNumberAndLine) {
  FakePrompts prompts;
  prompts.answers = {Answer::Yes, Answer::No};
  int ended = 0;
  std::vector<bool> held;
  ErrorReport report(
      prompts, [&](bool hold) { held.push_back(hold); }, [&] { ++ended; });
  report.ReportError("frmMain", RuntimeError::Overflow(), 3);
  EXPECT_EQ(prompts.texts.back(),
            "frmMain\r\nOverflow\r\nError no. 6\r\nLine 3\r\nDo you wish to try to continue?");
  EXPECT_EQ(ended, 0);
  EXPECT_EQ(held, (std::vector<bool>{true, false}));  // no tick while the question is open
  report.ReportError("modTimer", RuntimeError::TypeMismatch(), 0);
  EXPECT_NE(prompts.texts.back().find("Line 0\r\n"), std::string::npos);
  EXPECT_EQ(ended, 1);
}

class FailingPrompts : public FakePrompts {
 public:
  Answer AskToContinue(const std::string& question) override {
    texts.push_back(question);
    if (texts.size() == 1) throw std::runtime_error("no window");
    return Answer::Yes;
  }
};

TEST(ErrorReportTest, AnErrorOfItsOwnIsReportedOnceAndSkipped) {
  FailingPrompts prompts;
  ErrorReport report(
      prompts, [](bool) {}, [] {});
  report.ReportError("frmMain", RuntimeError::Overflow(), 1);
  ASSERT_EQ(prompts.texts.size(), 2U);
  EXPECT_EQ(prompts.texts[1].rfind("modError\r\nno window\r\n", 0), 0U);
}

}  // namespace
}  // namespace corvanel
