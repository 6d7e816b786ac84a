// Library start-up: finds the data files, loads them once when the library
// is loaded and releases them when it is unloaded (see startup_entry.cpp
// for the platform entry points; tests call Load and Release directly).
#pragma once

#include <cstddef>

namespace kvx::startup {

inline constexpr size_t kPathBytes = 260;      // path buffers
inline constexpr size_t kOnMemoryBytes = 128;  // the "OnMemory" value

// The load sequence: the "OnMemory" flag, the Delta T file, the planet
// position file (and its Earth range), the JPL DE file (and the Moon from
// it), otherwise the Moon position file, and the meteor list. Every failure
// is silent (the readers print their own diagnostics).
void Load();

// The release sequence: Delta T, meteors, planet file, Moon source, JPL file.
void Release();

// "OnMemory" is on when its value is "yes" or "true" in any case.
bool ReadOnMemory();

// Path of setting `name`: the setting as stored when there is one, else
// `defaultName` in the library's directory. out holds kPathBytes.
void BuildPath(const char *name, const char *defaultName, char *out);

// The Earth entry of the planet position file as recorded at load: returns
// the range lookup's result (1 when the file was loaded and holds the Earth,
// else 0) and writes the first and last Julian dates kept then.
int PlanetFileEarthRange(double *start, double *end);

}  // namespace kvx::startup
