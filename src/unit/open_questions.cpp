#include "unit/open_questions.h"

#include <algorithm>

namespace orvalis {
namespace {

/// Ten minutes of greetings, one in four seconds: no line keeps an answer longer, and so many are made up for in some
/// seconds once the unit is there again.
constexpr std::int32_t kMostGreetings = 150;
/// What a program that used the line before may have left in it: a minute of greetings.
constexpr std::int32_t kGreetingsOfOthers = 16;

}  // namespace

void OpenQuestions::FrameAsked() {
  frame_open_ = true;
  before_ = std::min(before_ + after_, kMostGreetings);
  after_ = 0;
}

void OpenQuestions::FrameAnswered() {
  frame_open_ = false;
  before_ = 0;
}

void OpenQuestions::FrameCameLate() {
  if (proven_) before_ = 0;
}

void OpenQuestions::FrameMissing() {
  if (!proven_) before_ = std::max(before_, kGreetingsOfOthers);
}

void OpenQuestions::AnswerBrokeOff() { before_ = std::min(before_ + 1, kMostGreetings); }

bool OpenQuestions::GreetingCame() {
  if (before_ > 0) {
    --before_;
  } else if (after_ > 0) {
    --after_;
    frame_open_ = false;
  }
  return !frame_open_;
}

}  // namespace orvalis
