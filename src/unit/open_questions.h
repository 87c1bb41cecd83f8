#pragma once

#include <cstdint>

namespace orvalis {

/// Which answers of the unit may still be on their way. Answers carry no mark of their question, and a question without
/// an answer is either lost or late. Two things are certain all the same: the line keeps the order, and a greeting's
/// "W" is no frame. So a request for a frame that went without its answer is over as soon as a "W" has come that can
/// only belong to a greeting sent after it. Until then no other frame may be asked for, and a frame that is taken as an
/// answer is the answer. docs/serial-protocol.md has the whole argument.
class OpenQuestions {
 public:
  /// Whether a frame that was asked for, or that somebody else may have asked for, can still come.
  [[nodiscard]] bool FrameOpen() const { return frame_open_; }
  /// Whether a "W" can still come before the answer to the last request for a frame.
  [[nodiscard]] bool GreetingOpenBeforeFrame() const { return before_ > 0; }

  /// The port was opened: another program may have used the line meanwhile. Earlier requests stay open.
  void BeginSession() { proven_ = false; }
  /// A frame came in time while the line was in use for a while.
  void LineProven() { proven_ = true; }

  /// A frame is asked for; also to be called when there is another reason not to trust what comes next.
  void FrameAsked();
  /// A whole frame came in time.
  void FrameAnswered();
  /// A whole frame came, too late to be used.
  void FrameCameLate();
  /// The time for the answer is over, or the answer was damaged.
  void FrameMissing();
  /// The line fell silent in the middle of an answer: its rest may begin with a "W" that is no greeting's.
  void AnswerBrokeOff();

  void GreetingSent() { ++after_; }
  /// A "W" came. Returns whether nothing older than the last greetings can come any more.
  bool GreetingCame();

 private:
  bool frame_open_ = false;
  bool proven_ = false;      ///< nothing of an earlier user of the line is in it any more
  std::int32_t before_ = 0;  ///< greetings sent before the last request for a frame whose "W" may still come
  std::int32_t after_ = 0;   ///< and those sent after it
};

}  // namespace orvalis
