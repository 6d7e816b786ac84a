// Calendar names: the holiday kinds and the solar-term identifiers of the
// library, in English with the romanized Japanese name.
#include "calendar_names.h"

#include <cmath>
#include <cstdio>
#include <iterator>

namespace kvx::cli {

const char *HolidayName(int kind) {
    static const char *const kNames[] = {
        "",
        "Substitute holiday (Furikae kyujitsu)",
        "National holiday between two holidays (Kokumin no kyujitsu)",
        "New Year's Day (Ganjitsu)",
        "Coming of Age Day (Seijin no hi)",
        "National Foundation Day (Kenkoku kinen no hi)",
        "Vernal Equinox Day (Shunbun no hi)",
        "Autumnal Equinox Day (Shubun no hi)",
        "Constitution Memorial Day (Kenpo kinenbi)",
        "Children's Day (Kodomo no hi)",
        "Respect for the Aged Day (Keiro no hi)",
        "Health and Sports Day (Taiiku no hi)",
        "Culture Day (Bunka no hi)",
        "Labour Thanksgiving Day (Kinro kansha no hi)",
        "The Emperor's Birthday (Tenno tanjobi)",
        "Greenery Day (Midori no hi)",
        "Marine Day (Umi no hi)",
        "Showa Day (Showa no hi)",
        "State funeral of Emperor Showa (Showa tenno no taiso no rei)",
        "Wedding of Crown Prince Akihito (Kotaishi Akihito shinno no kekkon no gi)",
        "Wedding of Crown Prince Naruhito (Kotaishi Naruhito shinno no kekkon no gi)",
        "Enthronement ceremony (Sokui reiseiden no gi)",
        "Mountain Day (Yama no hi)",
        "Accession of the Emperor (Tenno no sokui no hi)",
        "Sports Day (Supotsu no hi)",
        "Enthronement ceremony (Sokui reiseiden no gi)",
    };
    return kind >= 0 && kind < static_cast<int>(std::size(kNames)) ? kNames[kind] : "";
}

const char *TermName(int identifier) {
    static const char *const kNames[] = {
        "",
        "Minor Cold (Shokan)",
        "Major Cold (Daikan)",
        "Start of Spring (Risshun)",
        "Rain Water (Usui)",
        "Awakening of Insects (Keichitsu)",
        "Vernal Equinox (Shunbun)",
        "Clear and Bright (Seimei)",
        "Grain Rain (Kokuu)",
        "Start of Summer (Rikka)",
        "Grain Buds (Shoman)",
        "Grain in Ear (Boshu)",
        "Summer Solstice (Geshi)",
        "Minor Heat (Shosho)",
        "Major Heat (Taisho)",
        "Start of Autumn (Risshu)",
        "End of Heat (Shosho)",
        "White Dew (Hakuro)",
        "Autumnal Equinox (Shubun)",
        "Cold Dew (Kanro)",
        "Frost's Descent (Soko)",
        "Start of Winter (Ritto)",
        "Minor Snow (Shosetsu)",
        "Major Snow (Taisetsu)",
        "Winter Solstice (Toji)",
        "Winter doyo begins (Fuyu no doyo iri)",
        "Spring doyo begins (Haru no doyo iri)",
        "Summer doyo begins (Natsu no doyo iri)",
        "Autumn doyo begins (Aki no doyo iri)",
        "Rainy season begins (Nyubai)",
        "Crow-dipper sprouts (Hangesho)",
        "Eve of spring (Setsubun)",
        "Spring equinoctial week begins (Haru no higan iri)",
        "Autumn equinoctial week begins (Aki no higan iri)",
        "88th night (Hachiju-hachiya)",
        "210th day (Nihyaku-toka)",
    };
    return identifier >= 0 && identifier < static_cast<int>(std::size(kNames)) ? kNames[identifier] : "";
}

std::string DateText(int year, int month, int day) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02d", year, month, day);
    return buf;
}

const char *WeekdayShort(int year, int month, int day) {
    static const char *const kNames[7] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    double w = std::fmod(std::floor(CalcJd(year, month, day) + 1.5), 7.0);
    if (w < 0.0) w += 7.0;
    return kNames[static_cast<int>(w)];
}

std::string OldMonthText(int month) { return month < 0 ? "L" + std::to_string(-month) : std::to_string(month); }

std::string ClockHoursText(double hours) {
    int minutes = static_cast<int>(hours * 60.0 + 0.5);
    if (minutes >= 24 * 60) minutes = 24 * 60 - 1;
    char buf[16];
    std::snprintf(buf, sizeof buf, "%02d:%02d", minutes / 60, minutes % 60);
    return buf;
}

}  // namespace kvx::cli
