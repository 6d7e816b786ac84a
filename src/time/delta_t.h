// The delta-T table file: loaded once at start-up, released at unload.
#pragma once

namespace kvx::deltat {

// Loads the delta-T file at `path` into the process-wide table (replacing
// none: call Release first). Returns true when a table was kept.
bool LoadFile(const char *path);

// Frees the loaded table, if any; Delta T falls back to the built-in rules.
void Release();

}  // namespace kvx::deltat
