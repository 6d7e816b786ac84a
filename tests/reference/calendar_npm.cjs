// Reference holidays from npm packages.
//
//   mkdir -p /tmp/npm-cal && cd /tmp/npm-cal && \
//     npm install @holiday-jp/holiday_jp@2.5.1 japanese-holidays@1.0.10
//   NODE_PATH=/tmp/npm-cal/node_modules node calendar_npm.cjs data
//
// Writes:
//   holidays_npm.txt   every public holiday of Japan 1948-2100 known to
//       either package: year, month, day, and a mask: 1 = listed by
//       @holiday-jp/holiday_jp (its table covers 1970-2050), 2 = listed by
//       japanese-holidays (rules, every year).
const fs = require('fs');
const path = require('path');
const holidayJp = require('@holiday-jp/holiday_jp');
const JapaneseHolidays = require('japanese-holidays');

const dir = process.argv[2] || '.';
const versions = ['@holiday-jp/holiday_jp', 'japanese-holidays']
  .map((p) => p + ' ' + require(p + '/package.json').version).join(', ');

const days = new Map();
const key = (y, m, d) => y * 10000 + m * 100 + d;
for (let y = 1948; y <= 2100; ++y) {
  for (const h of JapaneseHolidays.getHolidaysOf(y)) {
    const k = key(y, h.month, h.date);
    days.set(k, (days.get(k) || 0) | 2);
  }
}
// holiday_jp keys its table by "YYYY-MM-DD".
for (const h of holidayJp.between(new Date(Date.UTC(1948, 0, 1)), new Date(Date.UTC(2100, 11, 31)))) {
  const [y, m, d] = h.date instanceof Date
    ? [h.date.getFullYear(), h.date.getMonth() + 1, h.date.getDate()]
    : String(h.date).slice(0, 10).split('-').map(Number);
  const k = key(y, m, d);
  days.set(k, (days.get(k) || 0) | 1);
}
let out = '# ' + versions + '\n# year month day mask (1 holiday_jp 1970-2050, 2 japanese-holidays)\n';
for (const k of [...days.keys()].sort((a, b) => a - b)) {
  out += `${Math.floor(k / 10000)} ${Math.floor(k / 100) % 100} ${k % 100} ${days.get(k)}\n`;
}
fs.writeFileSync(path.join(dir, 'holidays_npm.txt'), out);
