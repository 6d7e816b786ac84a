#!/usr/bin/env node
// Jovicentric positions of Io, Europa, Ganymede and Callisto (AU, J2000.0
// equator) from the npm package astronomy-engine (its L1.2 implementation),
// at dynamical Julian dates spread over 1900-2100.
//   npm install astronomy-engine   (in a scratch directory, e.g. /tmp/npm-psat)
//   NODE_PATH=/tmp/npm-psat/node_modules node tests/reference/galilean_astronomy_engine.cjs \
//       > tests/reference/data/galilean_astronomy_engine.txt
const A = require('astronomy-engine');
console.log('# astronomy-engine ' + '2.1.19' + ' JupiterMoons (L1.2)');
console.log('# jde moon x y z (AU, J2000.0 equator, jovicentric, geometric)');
const j0 = 2415020.5, j1 = 2488069.5, n = 60;
for (let k = 0; k < n; ++k) {
    // Uneven steps so the dates sample every phase of the orbits.
    const jde = j0 + (j1 - j0) * k / (n - 1) + 0.37 * k;
    const t = A.AstroTime.FromTerrestrialTime(jde - 2451545.0);
    const m = A.JupiterMoons(t);  // t.tt differs from jde by the package's Delta T round trip
    [m.io, m.europa, m.ganymede, m.callisto].forEach((s, i) => {
        console.log(`${(t.tt + 2451545.0).toFixed(9)} ${i + 1} ${s.x.toExponential(15)} ${s.y.toExponential(15)} ${s.z.toExponential(15)}`);
    });
}
