#include "ScanKit/Support/Dates.h"

#include "ScanKit/Support/Text.h"

#include <array>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <mutex>

#include <fmt/format.h>

namespace ScanKit::Dates {
namespace {

template <typename Number>
std::optional<Number> wholeNumber(std::string_view text) {
    Number value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

constexpr std::array<std::string_view, 12> monthNames{"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};

constexpr Date firstDate = std::chrono::sys_days{std::chrono::year{0} / 1 / 1};
constexpr Date endOfDates = std::chrono::sys_days{std::chrono::year{10000} / 1 / 1};

}  // namespace

Date current() {
    // Builds that must be reproducible give a fixed time by this name, which many tools know.
    if (const char* epoch = std::getenv("SOURCE_DATE_EPOCH")) {
        const auto seconds = wholeNumber<long long>(epoch);
        if (seconds && Date{std::chrono::seconds{*seconds}} >= firstDate &&
            Date{std::chrono::seconds{*seconds}} < endOfDates) {
            return Date{std::chrono::seconds{*seconds}};
        }
    }
    return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
}

std::string iso8601(Date date) {
    const auto day = std::chrono::floor<std::chrono::days>(date);
    const std::chrono::year_month_day calendar{day};
    const std::chrono::hh_mm_ss time{date - day};
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", static_cast<int>(calendar.year()),
                       static_cast<unsigned>(calendar.month()), static_cast<unsigned>(calendar.day()),
                       time.hours().count(), time.minutes().count(), time.seconds().count());
}

std::optional<Date> fromIso8601(std::string_view text) {
    if (text.size() != 20) {
        return std::nullopt;
    }
    const auto year = wholeNumber<int>(text.substr(0, 4));
    const auto month = wholeNumber<unsigned>(text.substr(5, 2));
    const auto day = wholeNumber<unsigned>(text.substr(8, 2));
    const auto hours = wholeNumber<unsigned>(text.substr(11, 2));
    const auto minutes = wholeNumber<unsigned>(text.substr(14, 2));
    const auto seconds = wholeNumber<unsigned>(text.substr(17, 2));
    if (!year || !month || !day || !hours || !minutes || !seconds) {
        return std::nullopt;
    }
    const std::chrono::year_month_day calendar{std::chrono::year{*year}, std::chrono::month{*month},
                                               std::chrono::day{*day}};
    // "February 30" has digits in all the right places.
    if (!calendar.ok() || *hours > 23 || *minutes > 59 || *seconds > 59) {
        return std::nullopt;
    }
    const Date date = std::chrono::sys_days{calendar} + std::chrono::hours{*hours} +
                      std::chrono::minutes{*minutes} + std::chrono::seconds{*seconds};
    // Writing it again checks the separators, which the numbers above stepped over.
    if (iso8601(date) != text) {
        return std::nullopt;
    }
    return date;
}

std::string longDate(Date date) {
    // The system's own routine understands every form of TZ; ICU reads some of them as UTC. Its zone is one for the
    // whole program, so that one thread at a time asks it.
    static std::mutex zone;
    const std::lock_guard guard(zone);
    tzset();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(date);
    std::tm local{};
    if (localtime_r(&seconds, &local) == nullptr) {
        return iso8601(date);
    }
    return fmt::format("{} {}, {}", monthNames[static_cast<std::size_t>(local.tm_mon)], local.tm_mday,
                       local.tm_year + 1900);
}

}  // namespace ScanKit::Dates
