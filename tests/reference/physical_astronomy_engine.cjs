#!/usr/bin/env node
// Rotation axes of the planets (IAU WGCCRE 2015 report, Archinal et al.
// 2018) from the npm package astronomy-engine: north pole right ascension
// and declination (J2000.0 equator) and the prime meridian angle W, at
// dynamical Julian dates spread over 1900-2100.
//   npm install astronomy-engine   (in a scratch directory, e.g. /tmp/npm-psat)
//   NODE_PATH=/tmp/npm-psat/node_modules node tests/reference/physical_astronomy_engine.cjs \
//       > tests/reference/data/physical_astronomy_engine.txt
const A = require('astronomy-engine');
const bodies = [A.Body.Mercury, A.Body.Venus, A.Body.Mars, A.Body.Jupiter, A.Body.Saturn, A.Body.Uranus,
                A.Body.Neptune, A.Body.Pluto];
console.log('# astronomy-engine 2.1.19 RotationAxis');
console.log('# jde code pole_ra_deg pole_dec_deg w_deg');
const j0 = 2415020.5, j1 = 2488069.5, n = 40;
for (let k = 0; k < n; ++k) {
    const t = A.AstroTime.FromTerrestrialTime(j0 + (j1 - j0) * k / (n - 1) + 0.731 * k - 2451545.0);
    bodies.forEach((b, code) => {
        const axis = A.RotationAxis(b, t);
        console.log(`${(t.tt + 2451545.0).toFixed(9)} ${code} ${(axis.ra * 15).toFixed(9)} ${axis.dec.toFixed(9)} ${axis.spin.toFixed(9)}`);
    });
}
