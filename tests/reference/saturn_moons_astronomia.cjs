#!/usr/bin/env node
// Meeus, Astronomical Algorithms ch. 46 as implemented by the npm package
// astronomia (saturnmoons.Qs): for each satellite the planetocentric vector
// on the ecliptic and equinox of B1950.0, in Saturn radii, from its
// elements (lambda, r, gamma, Omega) turned as Meeus does before his
// projection on the sky. A check of the transcription of the theory's
// constants, not of its accuracy.
//   npm install astronomia   (in a scratch directory, e.g. /tmp/npm-psat)
//   NODE_PATH=/tmp/npm-psat/node_modules node tests/reference/saturn_moons_astronomia.cjs \
//       > tests/reference/data/saturn_moons_astronomia.txt
const { saturnmoons } = require('astronomia');
const d = Math.PI / 180;
const names = ['mimas', 'enceladus', 'tethys', 'dione', 'rhea', 'titan', 'hyperion', 'iapetus'];
console.log('# astronomia ' + '4.2.0' + ' saturnmoons.Qs');
console.log('# jde index x y z (Saturn radii, ecliptic and equinox of B1950.0, planetocentric)');
const j0 = 2415020.5, j1 = 2488069.5, n = 25;
for (let k = 0; k < n; ++k) {
    // Rounded to what is printed, so both sides use the same date.
    const jde = Number((j0 + (j1 - j0) * k / (n - 1) + 0.29 * k).toFixed(5));
    const q = new saturnmoons.Qs(jde);
    names.forEach((name, i) => {
        const s = q[name]();
        const u = s.λ - s.Ω, w = s.Ω - 168.8112 * d;
        const X = s.r * (Math.cos(u) * Math.cos(w) - Math.sin(u) * Math.cos(s.γ) * Math.sin(w));
        const Y = s.r * (Math.sin(u) * Math.cos(w) * Math.cos(s.γ) + Math.cos(u) * Math.sin(w));
        const Z = s.r * Math.sin(u) * Math.sin(s.γ);
        const b = q.c1 * Y - q.s1 * Z, c = q.s1 * Y + q.c1 * Z;
        const x = q.c2 * X - q.s2 * b, y = q.s2 * X + q.c2 * b;
        console.log(`${jde.toFixed(5)} ${i + 1} ${x.toExponential(15)} ${y.toExponential(15)} ${c.toExponential(15)}`);
    });
}
