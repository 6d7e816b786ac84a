#!/usr/bin/env node
// Physical ephemerides of Mars, Jupiter and Saturn's ring after Meeus,
// Astronomical Algorithms (2nd ed.) ch. 42, 43 and 45, as implemented by the
// npm package astronomia with its VSOP87 series (mars.physical,
// jupiter.physical, saturnring.ring), geocentric, at dynamical Julian dates
// over 1950-2050; the first rows are the dates of Meeus' worked examples
// 42.a, 43.a and 45.a.
//   npm install astronomia   (in a scratch directory, e.g. /tmp/npm-psat)
//   NODE_PATH=/tmp/npm-psat/node_modules node tests/reference/physical_astronomia.cjs \
//       > tests/reference/data/physical_astronomia.txt
// Rows: jde code a1 .. a6 (degrees, arcseconds for the ring axes):
//   code 2 (Mars):    DE DS omega P
//   code 3 (Jupiter): DE DS omega1 omega2 P
//   code 4 (Saturn):  B B' deltaU P a b
const { planetposition, mars, jupiter, saturnring } = require('astronomia');
const vsop = (name) => new planetposition.Planet(require('astronomia/data/vsop87B' + name).default);
const earth = vsop('earth'), pm = vsop('mars'), pj = vsop('jupiter'), ps = vsop('saturn');
const d = 180 / Math.PI;
console.log('# astronomia 4.2.0 mars.physical, jupiter.physical, saturnring.ring (VSOP87B)');
console.log('# jde code a1 a2 a3 a4 a5 a6');
const f = (x) => x.toFixed(6);
function row(jde) {
    const m = mars.physical(jde, earth, pm);
    console.log(`${jde.toFixed(5)} 2 ${f(m[0] * d)} ${f(m[1] * d)} ${f(m[2] * d)} ${f(m[3] * d)} 0 0`);
    const j = jupiter.physical(jde, earth, pj);
    console.log(`${jde.toFixed(5)} 3 ${f(j[1] * d)} ${f(j[0] * d)} ${f(j[2] * d)} ${f(j[3] * d)} ${f(j[4] * d)} 0`);
    const s = saturnring.ring(jde, earth, ps);
    console.log(`${jde.toFixed(5)} 4 ${f(s[0] * d)} ${f(s[1] * d)} ${f(s[2] * d)} ${f(s[3] * d)} ${f(s[4] * d * 3600)} ${f(s[5] * d * 3600)}`);
}
// Example dates: 1992 Nov 9 0h, 1992 Dec 16 0h (the Jupiter example is 0h UT,
// Delta T 59 s), 1992 Dec 16 0h TD.
row(2448935.5);
row(2448972.50068);
row(2448972.5);
const j0 = 2433282.5, j1 = 2469807.5, n = 60;
for (let k = 0; k < n; ++k) row(Number((j0 + (j1 - j0) * k / (n - 1) + 0.37 * k).toFixed(5)));
