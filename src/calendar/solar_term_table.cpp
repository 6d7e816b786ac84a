// The term template: the 24 solar terms from 285 degrees, the four doyo
// entry days (Sun at 27, 117, 207, 297 degrees), the Sun at 80 degrees
// (nyubai, start of the rainy season) and 100 degrees (hangesho), and five
// days counted from terms: setsubun (eve of 315), the first days of the two
// equinoctial weeks (higan), and the 88th and 210th days from 315 degrees.
// Counted rows follow the row they count from.
#include "calendar/solar_term.h"

namespace kvx::sekki {

const TermTemplate kTemplate[kRows] = {
    {1, 6, 285, 1},     // shokan
    {1, 17, 297, 25},   // doyo entry (winter)
    {1, 21, 300, 2},    // daikan
    {2, 4, 315, 3},     // risshun
    {2, 3, -1, 31},     // setsubun: risshun - 1 day
    {2, 18, 330, 4},    // usui
    {3, 5, 345, 5},     // keichitsu
    {3, 20, 0, 6},      // shunbun
    {3, 17, -2, 32},    // higan (spring): shunbun - 3 days
    {4, 5, 15, 7},      // seimei
    {4, 17, 27, 26},    // doyo entry (spring)
    {4, 20, 30, 8},     // kokuu
    {5, 1, 45, 9},      // rikka
    {5, 1, -3, 34},     // hachijuhachiya: risshun + 87 days
    {5, 21, 60, 10},    // shoman
    {6, 5, 75, 11},     // boshu
    {6, 11, 80, 29},    // nyubai
    {6, 21, 90, 12},    // geshi
    {7, 2, 100, 30},    // hangesho
    {7, 7, 105, 13},    // shosho
    {7, 19, 117, 27},   // doyo entry (summer)
    {7, 23, 120, 14},   // taisho
    {8, 7, 135, 15},    // risshu
    {8, 23, 150, 16},   // shosho (end of heat)
    {8, 31, -4, 35},    // nihyakutoka: risshun + 209 days
    {9, 7, 165, 17},    // hakuro
    {9, 23, 180, 18},   // shubun
    {9, 20, -5, 33},    // higan (autumn): shubun - 3 days
    {10, 8, 195, 19},   // kanro
    {10, 20, 207, 28},  // doyo entry (autumn)
    {10, 23, 210, 20},  // soko
    {11, 7, 225, 21},   // ritto
    {11, 22, 240, 22},  // shosetsu
    {12, 7, 255, 23},   // taisetsu
    {12, 22, 270, 24},  // toji
};

}  // namespace kvx::sekki
