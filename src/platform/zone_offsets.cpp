#include "platform/zone_offsets.h"

#include <chrono>
#include <map>
#include <mutex>
#include <unicode/ucal.h>

namespace quillet {

namespace {

constexpr std::int64_t kDay = std::int64_t{24} * 60 * 60 * 1000;
// An offset is below a day, a jump of the clock is a day at most: the wall times of this margin's other side
// are out of doubt.
constexpr std::int64_t kDoubtfulTime = 3 * kDay;

// About two hundred days: a clock rarely changes more than twice in it.
constexpr int kSlotBits = 34;

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
  if (U_FAILURE(error) || stretches_.size() > UINT16_MAX) stretches_.clear();
  if (!stretches_.empty()) fillSlots();
}

std::shared_ptr<const ZoneOffsets> ZoneOffsets::of(const std::string& timeZone) {
  static std::mutex mutex;
  static std::map<std::string, std::shared_ptr<const ZoneOffsets>> known;
  const std::lock_guard lock(mutex);
  auto& offsets = known[timeZone];
  if (!offsets) offsets = std::make_shared<const ZoneOffsets>(timeZone);
  return offsets;
}

void ZoneOffsets::fillSlots() {
  std::size_t stretch = 0;
  for (std::int64_t start = stretches_.front().start; start < end_; start += std::int64_t{1} << kSlotBits) {
    while (stretch + 1 < stretches_.size() && stretches_[stretch + 1].start <= start) ++stretch;
    slots_.push_back(static_cast<std::uint16_t>(stretch));
  }
}

std::size_t ZoneOffsets::stretchAt(std::int64_t instant) const {
  std::size_t stretch = slots_[(instant - stretches_.front().start) >> kSlotBits];
  while (stretch + 1 < stretches_.size() && stretches_[stretch + 1].start <= instant) ++stretch;
  return stretch;
}

std::optional<std::int64_t> ZoneOffsets::offsetAt(std::int64_t instant) const {
  if (stretches_.empty() || instant < stretches_.front().start || instant >= end_) return std::nullopt;
  return stretches_[stretchAt(instant)].offset;
}

std::optional<std::int64_t> ZoneOffsets::instantOfWallTime(std::int64_t wallTime) const {
  if (stretches_.empty() || wallTime < startOfYear(kFirstYear) || wallTime >= startOfYear(kLastYear + 1))
    return std::nullopt;
  const std::size_t place = stretchAt(wallTime);
  const Stretch& stretch = stretches_[place];
  const std::int64_t end = place + 1 == stretches_.size() ? end_ : stretches_[place + 1].start;
  if (wallTime - stretch.start < kDoubtfulTime || end - wallTime < kDoubtfulTime) return std::nullopt;
  return wallTime - stretch.offset;
}

}  // namespace quillet
