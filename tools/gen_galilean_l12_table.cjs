#!/usr/bin/env node
// Writes src/psat/galilean_l12_table.cpp: the series of the L1.2 theory of
// the Galilean satellites (Lainey, Duriez & Vienne 2004; coefficients as
// distributed by IMCCE, ftp.imcce.fr/pub/ephem/satel/galilean/L1/L1.2/), in
// the truncated form carried by the npm package astronomy-engine.
//   npm install astronomy-engine   (in a scratch directory, e.g. /tmp/npm-psat)
//   NODE_PATH=/tmp/npm-psat/node_modules node tools/gen_galilean_l12_table.cjs > src/psat/galilean_l12_table.cpp
// Only the numbers are taken: the file's JupiterMoonModel literal and the
// rotation from Jupiter's equatorial frame of the theory to J2000.0.
const fs = require('fs');
const src = fs.readFileSync(require.resolve('astronomy-engine'), 'utf8');
function literal(name) {
    const start = src.indexOf(name);
    if (start < 0) throw new Error(name + ' not found');
    let i = src.indexOf('[', start), depth = 0, j = i;
    for (; j < src.length; ++j) {
        if (src[j] === '[') ++depth;
        else if (src[j] === ']' && --depth === 0) break;
    }
    return eval('(' + src.slice(i, j + 1) + ')');
}
const model = literal('const JupiterMoonModel =');
const rot = literal('const Rotation_JUP_EQJ = new RotationMatrix(');
const names = ['Io', 'Europa', 'Ganymede', 'Callisto'];
const f = (x) => x.toPrecision(17);
let out = [];
out.push('// L1.2 theory of the Galilean satellites: Lainey, Duriez & Vienne (2004),');
out.push('// A&A 420, 1171; series as distributed by IMCCE (L1.2), truncated as in the');
out.push('// astronomy-engine package. Written by tools/gen_galilean_l12_table.cjs.');
out.push('// Terms: amplitude, phase (rad), frequency (rad/day), t in days from');
out.push('// 1950-01-01 0h TT.');
out.push('#include "psat/galilean_l12_table.h"');
out.push('');
out.push('namespace kvx::psat {');
out.push('');
out.push('namespace {');
model.forEach((m, k) => {
    for (const key of ['a', 'l', 'z', 'zeta']) {
        out.push(`constexpr L12Term k${names[k]}_${key}[] = {`);
        for (const [a, p, w] of m[key]) out.push(`    {${f(a)}, ${f(p)}, ${f(w)}},`);
        out.push('};');
    }
});
out.push('}  // namespace');
out.push('');
out.push('const L12Moon kL12Moons[4] = {');
model.forEach((m, k) => {
    const n = names[k];
    out.push(`    {${f(m.mu)}, {${f(m.al[0])}, ${f(m.al[1])}},`);
    out.push(`     k${n}_a, ${m.a.length}, k${n}_l, ${m.l.length}, k${n}_z, ${m.z.length}, k${n}_zeta, ${m.zeta.length}},`);
});
out.push('};');
out.push('');
out.push('// Jupiter\'s equatorial frame of the theory to the J2000.0 equator, row by');
out.push('// row as applied to a column vector (the package stores its transpose).');
out.push('const double kL12ToJ2000[9] = {');
for (let i = 0; i < 3; ++i) out.push('    ' + [0, 1, 2].map((j) => f(rot[j][i])).join(', ') + ',');
out.push('};');
out.push('');
out.push('}  // namespace kvx::psat');
console.log(out.join('\n'));
