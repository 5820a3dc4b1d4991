#include "platform/zone_offsets.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <unicode/ucal.h>

#include "support/random_source.h"

namespace quillet {
namespace {

using testing::RandomSource;

constexpr std::int64_t kHour = 3600000;
constexpr std::int64_t kDay = 24 * kHour;
constexpr std::int64_t k2018March11 = 1520726400000;  // 00:00 UTC; New York's clock goes forward at 07:00 UTC

using Calendar = std::unique_ptr<UCalendar, decltype(&ucal_close)>;

Calendar calendarOf(const std::string& zone) {
  UErrorCode error = U_ZERO_ERROR;
  const std::u16string name(zone.begin(), zone.end());
  return {ucal_open(name.data(), static_cast<std::int32_t>(name.size()), "en", UCAL_GREGORIAN, &error),
          ucal_close};
}

std::int64_t offsetOfIcu(UCalendar* calendar, std::int64_t instant) {
  UErrorCode error = U_ZERO_ERROR;
  ucal_setMillis(calendar, static_cast<UDate>(instant), &error);
  return ucal_get(calendar, UCAL_ZONE_OFFSET, &error) + ucal_get(calendar, UCAL_DST_OFFSET, &error);
}

TEST(ZoneOffsets, OffsetsChangeWithTheClock) {
  const ZoneOffsets offsets("America/New_York");
  EXPECT_EQ(offsets.offsetAt(k2018March11 + 7 * kHour - 1), -5 * kHour);
  EXPECT_EQ(offsets.offsetAt(k2018March11 + 7 * kHour), -4 * kHour);
  EXPECT_EQ(offsets.offsetAt(-80000 * kDay), std::nullopt);
  EXPECT_EQ(offsets.offsetAt(90000 * kDay), std::nullopt);
}

TEST(ZoneOffsets, WallTimesNearAChangeAreInDoubt) {
  const ZoneOffsets offsets("America/New_York");
  EXPECT_EQ(offsets.instantOfWallTime(k2018March11), std::nullopt);
  EXPECT_EQ(offsets.instantOfWallTime(k2018March11 - 5 * kDay), k2018March11 - 5 * kDay + 5 * kHour);
  EXPECT_EQ(offsets.instantOfWallTime(k2018March11 + 5 * kDay), k2018March11 + 5 * kDay + 4 * kHour);
  EXPECT_EQ(offsets.instantOfWallTime(-25568 * kDay), std::nullopt) << "1899-12-31";
  EXPECT_EQ(offsets.instantOfWallTime(84006 * kDay), std::nullopt) << "2200-01-01";
  EXPECT_TRUE(ZoneOffsets("UTC").instantOfWallTime(84006 * kDay - 1));
  EXPECT_TRUE(ZoneOffsets("UTC").instantOfWallTime(-25567 * kDay));
}

TEST(ZoneOffsets, AnUnknownZoneActsAsUtc) {
  EXPECT_EQ(ZoneOffsets("No/Such_Zone").offsetAt(k2018March11), 0);
}

TEST(ZoneOffsets, AreThoseOfIcu) {
  RandomSource random(91);
  for (const char* zone :
       {"UTC", "America/New_York", "America/Sao_Paulo", "Asia/Kolkata", "Australia/Lord_Howe",
        "Europe/Berlin", "Pacific/Apia", "Africa/Casablanca", "Europe/Dublin", "Etc/GMT+12"}) {
    const auto offsets = ZoneOffsets::of(zone);
    EXPECT_EQ(offsets, ZoneOffsets::of(zone)) << "made once";
    const Calendar calendar = calendarOf(zone);
    std::size_t sure = 0;
    const std::uint64_t count = testing::rounds(4000);
    for (std::uint64_t i = 0; i < count; ++i) {
      const std::int64_t time =
          static_cast<std::int64_t>(random.below(109570 * 24 * 4)) * (kHour / 4) - 25567 * kDay;
      ASSERT_EQ(offsets->offsetAt(time), offsetOfIcu(calendar.get(), time)) << zone << " " << time;
      const auto instant = offsets->instantOfWallTime(time);
      if (!instant) continue;
      ++sure;
      ASSERT_EQ(*instant + offsetOfIcu(calendar.get(), *instant), time) << zone;
      ASSERT_EQ(offsetOfIcu(calendar.get(), *instant - 30 * kHour),
                offsetOfIcu(calendar.get(), *instant + 30 * kHour));
    }
    EXPECT_GT(sure, count * 9 / 10) << zone;
  }
}

}  // namespace
}  // namespace quillet
