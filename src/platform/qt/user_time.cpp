#include "platform/qt/user_time.h"

#include <QDate>
#include <QRegularExpression>
#include <QTime>
#include <algorithm>

namespace orvalis {
namespace {

std::string Plain(QString text) {
  // Some locales separate "PM" from the time by a blank that some fonts and consoles lack.
  return text.replace(QChar(0x202f), ' ').toStdString();
}

QString WithLongYear(QString format) {
  static const QRegularExpression short_year("(?<!y)yy(?!y)");
  return format.replace(short_year, "yyyy");
}

/// The zone is the same for all times and would only take up space.
QString WithoutZone(QString format) {
  // Quoted parts are literal text, including a "t".
  static const QRegularExpression zone("('[^']*')|\\s*[(\\[]?t+[)\\]]?\\s*");
  return format.replace(zone, "\\1").trimmed();
}

TimeStyle::Format TimeFormat(const QLocale& locale, const QString& format) {
  return [locale, format](const CivilTime& time) {
    constexpr int kLastSecond = 59;  // a leap second has no name in a locale
    return Plain(locale.toString(QTime(time.hour, time.minute, std::min(time.second, kLastSecond)), format));
  };
}

}  // namespace

TimeStyle TimeStyleOf(const QLocale& locale) {
  // Asked by the format: the language may be one thing and the time's habits another.
  const bool has_habits = locale.dateFormat(QLocale::ShortFormat) != QLocale::c().dateFormat(QLocale::ShortFormat);
  const QString date = has_habits ? WithLongYear(locale.dateFormat(QLocale::ShortFormat)) : "yyyy-MM-dd";
  const QString time = has_habits ? WithoutZone(locale.timeFormat(QLocale::LongFormat)) : "HH:mm:ss";
  const QString short_time = has_habits ? WithoutZone(locale.timeFormat(QLocale::ShortFormat)) : "HH:mm";
  return {
      .date = [locale, date](
                  const CivilTime& day) { return Plain(locale.toString(QDate(day.year, day.month, day.day), date)); },
      .time = TimeFormat(locale, time),
      .hour_and_minute = TimeFormat(locale, short_time)};
}

}  // namespace orvalis
