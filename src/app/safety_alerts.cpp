#include "app/safety_alerts.h"

#include <exception>
#include <utility>

#include "reading/conditions.h"

namespace orvalis {
namespace {

using std::chrono::milliseconds;

consteval ReasonSet SetOf(std::initializer_list<Reason> reasons) {
  ReasonSet set;
  for (const Reason reason : reasons) set.Add(reason);
  return set;
}

constexpr ReasonSet kTest = SetOf({Reason::kForced});
/// What remains for a while after any other reason, a test among them.
constexpr ReasonSet kAfterwards = SetOf({Reason::kHold});

/// Whether it is a person's test, and nothing else, that makes it unsafe.
bool IsOnlyTest(const Observation& now) { return now.figures.test_left.has_value() && now.verdict.reasons == kTest; }

bool IsStopping(const Observation& now) { return now.verdict.reasons.Has(Reason::kStopping); }

}  // namespace

struct SafetyAlerts::Row {
  const char* name;  ///< for a person
  const char* fact;  ///< for the program
  std::string Settings::*sound;
  std::string Settings::*program;
  bool (*holds)(const SafetyVerdict& verdict);
};

// In the order in which they are given: of two sounds the second is heard, and it says more.
const std::array<SafetyAlerts::Row, SafetyAlerts::kKinds> SafetyAlerts::kRows{{
    {"Unsafe", "unsafe", &Settings::UnsafeSound, &Settings::UnsafeApp, [](const SafetyVerdict& v) { return !v.safe; }},
    {"Safe again", "safe", &Settings::SafeSound, &Settings::SafeApp, [](const SafetyVerdict& v) { return v.safe; }},
    {"No readings", "no_readings", &Settings::NoReadingsSound, &Settings::NoReadingsApp,
     [](const SafetyVerdict& v) {
       constexpr ReasonSet kSilence = SetOf({Reason::kStale, Reason::kNoReading, Reason::kNoConnection});
       return v.reasons.Without(kSilence) != v.reasons;
     }},
}};

SafetyAlerts::~SafetyAlerts() {
  for (const Course& course : courses_) parts_.loop.Cancel(course.retry);
}

void SafetyAlerts::Note(const Observation& now) {
  if (!HasBegun(now)) return;
  for (std::size_t kind = 0; kind < kKinds; ++kind) {
    Course& course = courses_[kind];
    const bool holds = kRows[kind].holds(now.verdict);
    // A program that only reports a test must hear of it when it becomes serious.
    const bool serious = course.test && !IsOnlyTest(now) && !now.verdict.reasons.Without(kAfterwards).empty();
    if (course.holds && (!holds || serious)) End(course);
    if (holds && !course.holds) Begin(kind, now);
  }
}

bool SafetyAlerts::HasBegun(const Observation& now) {
  const milliseconds since_start(parts_.loop.TickCount() - start_);
  if (now.age || since_start >= kFreshFor) begun_ = true;
  return begun_;
}

void SafetyAlerts::Begin(std::size_t kind, const Observation& now) {
  Course& course = courses_[kind];
  course.holds = true;
  course.test = IsOnlyTest(now);
  course.failures = 0;
  if (parts_.settings.SafetyAlerts == 0) return;
  StartProgram(kind, now);
  // Its end would come at once.
  if (!IsStopping(now)) Play(kRows[kind]);
}

void SafetyAlerts::End(Course& course) {
  parts_.loop.Cancel(std::exchange(course.retry, 0));
  ++course.number;
  course.holds = false;
  course.test = false;
}

void SafetyAlerts::Play(const Row& row) {
  const std::string& file = parts_.settings.*row.sound;
  if (file.empty()) return;
  try {
    parts_.sounds.Play(file);
    Record(row, "played " + file, EventLevel::kNotice);
  } catch (const std::exception& error) {
    Record(row, error.what());
  }
}

void SafetyAlerts::StartProgram(std::size_t kind, const Observation& now) {
  const Row& row = kRows[kind];
  const std::string path = parts_.settings.*row.program;
  if (path.empty()) return;
  const std::uint64_t number = courses_[kind].number;
  const bool test = courses_[kind].test;
  try {
    parts_.programs.Start({.path = path,
                           .facts = FactsOfAlert(row.fact, test, now),
                           .ended = [this, kind, number, path](const std::string& failure) {
                             if (!failure.empty()) Fail(kind, number, path + " " + failure, false);
                           }});
    Record(row, "started " + path, EventLevel::kNotice);
  } catch (const std::exception& error) {
    Fail(kind, number, error.what(), IsStopping(now));
  }
}

void SafetyAlerts::Fail(std::size_t kind, std::uint64_t number, const std::string& what, bool last_chance) {
  const Row& row = kRows[kind];
  Course& course = courses_[kind];
  // What it was started for may be over.
  if (number != course.number || last_chance) return Record(row, what);
  if (course.failures == kPauses.size()) {
    return Record(row, what + "; given up after " + std::to_string(kPauses.size() + 1) + " attempts");
  }
  const std::chrono::seconds pause = kPauses[course.failures++];
  course.retry = parts_.loop.CallAfter(pause, [this, kind] { Retry(kind); });
  Record(row, what + "; trying again in " + std::to_string(pause.count()) + " s");
}

void SafetyAlerts::Retry(std::size_t kind) {
  courses_[kind].retry = 0;
  const Observation now = parts_.observer.Now();
  if (parts_.settings.SafetyAlerts != 0 && kRows[kind].holds(now.verdict)) StartProgram(kind, now);
}

void SafetyAlerts::Record(const Row& row, const std::string& what, EventLevel level) {
  parts_.events.Record(std::string("alert ") + row.name + ": " + what, level);
}

}  // namespace orvalis
