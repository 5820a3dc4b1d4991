#include "platform/zone_offsets.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <unicode/ucal.h>

namespace quillet {

namespace {

constexpr std::int64_t kDay = 24 * 60 * 60 * 1000;
// An offset is below a day, a jump of the clock is a day at most: the wall times of this margin's other side
// are out of doubt.
constexpr std::int64_t kDoubtfulTime = 3 * kDay;

constexpr std::int64_t startOfYear(int year) {
  using namespace std::chrono;
  return sys_days{std::chrono::year{year} / January / 1}.time_since_epoch().count() * kDay;
}

struct CloseCalendar {
  void operator()(UCalendar* calendar) const { ucal_close(calendar); }
};

std::int64_t offsetOfIcu(UCalendar* calendar, std::int64_t instant, UErrorCode& error) {
  ucal_setMillis(calendar, static_cast<UDate>(instant), &error);
  return std::int64_t{ucal_get(calendar, UCAL_ZONE_OFFSET, &error)} +
         ucal_get(calendar, UCAL_DST_OFFSET, &error);
}

}  // namespace

ZoneOffsets::ZoneOffsets(const std::string& timeZone) {
  UErrorCode error = U_ZERO_ERROR;
  const std::u16string zone(timeZone.begin(), timeZone.end());
  const std::unique_ptr<UCalendar, CloseCalendar> calendar(ucal_open(zone.empty() ? nullptr : zone.data(),
                                                                     static_cast<std::int32_t>(zone.size()),
                                                                     "en", UCAL_GREGORIAN, &error));
  if (U_FAILURE(error)) return;
  std::int64_t start = startOfYear(kFirstYear) - 2 * kDoubtfulTime;
  const std::int64_t end = startOfYear(kLastYear + 1) + 2 * kDoubtfulTime;
  while (start < end && U_SUCCESS(error)) {
    stretches_.push_back({start, offsetOfIcu(calendar.get(), start, error)});
    UDate next = 0;
    if (!ucal_getTimeZoneTransitionDate(calendar.get(), UCAL_TZ_TRANSITION_NEXT, &next, &error)) break;
    if (static_cast<std::int64_t>(next) <= start) break;
    start = static_cast<std::int64_t>(next);
  }
  end_ = end;
  if (U_FAILURE(error)) stretches_.clear();
}

std::vector<ZoneOffsets::Stretch>::const_iterator ZoneOffsets::stretchAt(std::int64_t instant) const {
  const auto behind =
      std::upper_bound(stretches_.begin(), stretches_.end(), instant,
                       [](std::int64_t time, const Stretch& stretch) { return time < stretch.start; });
  return behind - 1;
}

std::optional<std::int64_t> ZoneOffsets::offsetAt(std::int64_t instant) const {
  if (stretches_.empty() || instant < stretches_.front().start || instant >= end_) return std::nullopt;
  return stretchAt(instant)->offset;
}

std::optional<std::int64_t> ZoneOffsets::instantOfWallTime(std::int64_t wallTime) const {
  if (stretches_.empty() || wallTime < startOfYear(kFirstYear) || wallTime >= startOfYear(kLastYear + 1))
    return std::nullopt;
  const auto stretch = stretchAt(wallTime);
  const std::int64_t end = stretch + 1 == stretches_.end() ? end_ : (stretch + 1)->start;
  if (wallTime - stretch->start < kDoubtfulTime || end - wallTime < kDoubtfulTime) return std::nullopt;
  return wallTime - stretch->offset;
}

}  // namespace quillet
