// Reference librations and axis angle of the Moon from "astronomia" (npm),
// an independent implementation of Meeus, Astronomical Algorithms, 2nd ed.,
// ch. 53 (physical librations from Eckhardt's theory).
//
// For each date the Moon's longitude and latitude (mean ecliptic of date,
// no nutation) come from the package's own lunar theory; they are inputs
// only, written out so that the library is evaluated with the same values.
// The axis angle is evaluated with the library's conventions: right
// ascension on the mean equator of date (mean obliquity, no nutation), the
// mean obliquity in the pole rotation, and the Moon's latitude as divisor.
//
// Columns: jde T(centuries) lambda beta dpsi eps_mean alpha rho sigma tau
//          l b P   (degrees)
const { moon, moonposition, nutation, coord } = require('astronomia');

const d = 180 / Math.PI;
const r = Math.PI / 180;

function row(jde) {
  const pos = moonposition.position(jde);
  const lambda = pos.lon, beta = pos.lat;
  const m = new moon.Moon(jde);
  const epsMean = nutation.meanObliquity(jde);
  const [l, b] = m.lib(lambda, beta);
  // Mean obliquity and no nutation in the right ascension: pa() rotates
  // (its lambda + dpsi, beta) with m.eps, so pass lambda - dpsi.
  m.ε = epsMean;
  m.sε = Math.sin(epsMean);
  m.cε = Math.cos(epsMean);
  let P = m.pa(lambda - m.Δψ, beta, beta);
  if (P > Math.PI) P -= 2 * Math.PI;
  const eq = new coord.Ecliptic(lambda, beta).toEquatorial(epsMean);
  const T = (jde - 2451545.0) / 36525;
  const out = [jde.toFixed(5), T.toFixed(12)];
  for (const v of [lambda, beta, m.Δψ, epsMean, eq.ra, m.ρ, m.σ, m.τ, l, b, P]) out.push((v * d).toFixed(10));
  return out.join(' ');
}

console.log('# jde T lambda beta dpsi eps_mean alpha rho sigma tau l b P (degrees), from astronomia (Meeus ch. 53)');
// Meeus' worked example 53.a (1992 April 12, 0h TD) first.
console.log(row(2448724.5));
for (let jde = 2415020.5; jde < 2488069.5; jde += 173.123456) console.log(row(jde));
