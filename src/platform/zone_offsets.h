// The offsets of a time zone from UTC in the years 1900 to 2199, taken from ICU once, for reading and
// printing dates without it. Times are in milliseconds; a wall time counts from 1970-01-01 00:00 of the clock
// on the wall.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillet {

class ZoneOffsets {
 public:
  static constexpr int kFirstYear = 1900;
  static constexpr int kLastYear = 2199;

  // As ICU names the zone; empty for the system's or that of TZ. Made once for each zone and shared by all
  // threads.
  static std::shared_ptr<const ZoneOffsets> of(const std::string& timeZone);
  explicit ZoneOffsets(const std::string& timeZone);

  // What the clock on the wall is ahead of UTC. Nothing outside the years.
  std::optional<std::int64_t> offsetAt(std::int64_t instant) const;

  // Nothing outside the years and in the days around a change of the clock, where a wall time may be skipped
  // or come twice.
  std::optional<std::int64_t> instantOfWallTime(std::int64_t wallTime) const;

 private:
  // Holds until the next one's start.
  struct Stretch {
    std::int64_t start;
    std::int64_t offset;
  };

  void fillSlots();
  // The place of the one around an instant that lies behind the first start and in front of end_.
  std::size_t stretchAt(std::int64_t instant) const;

  std::vector<Stretch> stretches_;
  std::vector<std::uint16_t>
      slots_;  // for each slot of time from the first start on: the stretch at its start
  std::int64_t end_ = 0;
};

}  // namespace quillet
