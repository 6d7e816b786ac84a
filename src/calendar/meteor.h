// The meteor-shower catalogue: read once from a text file at start-up.
#pragma once

#include "kvxlib.h"
#include "platform/file.h"

namespace kvx::meteor {

// Parses one line into `out`; true when the line is an accepted record.
bool ParseLine(const char *line, MeteorInfo *out);

// Loads the file at `path` as the catalogue (call Release first when one is
// loaded). True when at least one record was accepted; on failure the
// record count keeps its previous value.
bool LoadFile(const char *path);

// As LoadFile, from an open source (a file, or the file's bytes in memory).
bool LoadFrom(const platform::Source &source);

// Frees the catalogue; the record count is kept.
void Release();

}  // namespace kvx::meteor
