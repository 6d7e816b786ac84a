// Reader of JPL DE binary ephemeris files (and of the "KQ" variant whose
// header is laid out ready for the reader), and the two process-wide
// handles: the main ephemeris and the Moon source.
//
// File format: Standish, "JPL Planetary and Lunar Ephemerides, DE405/LE405"
// (JPL IOM 312.F-98-048, 1998) and the JPL export documentation: a header
// record (titles, constant names, coverage, AU, EMRAT, coefficient pointers,
// DE number), a record of constant values, then fixed-length records of
// Chebyshev coefficients, each starting with its two Julian dates.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "platform/file.h"

namespace kvx::jpl {

inline constexpr int kBufferDoubles = 1024;  // coefficients a record may hold
inline constexpr int kPointerEntries = 13;   // 11 bodies, nutations, librations

// Error codes of Evaluate.
enum Code : int {
    kOk = 0,
    kNotReady = 1,       // no open stream, or a state that is not ready
    kReadFailed = 2,     // seek or read of a record failed
    kBadTarget = 3,      // target 0 or >= 16, centre 0, or component missing
    kBadTargetCentre = 4,  // target equal to centre
    kBadCentre = 5,      // centre above 12
    kOutOfRange = 6,     // date outside [startJd, endJd]
    kBadVersion = 7,     // (opener) DE number not supported
};

// Per component: first coefficient (1-based within a record), coefficients
// per coordinate, sub-intervals per record, coordinates.
struct ComponentPointer {
    int32_t first;
    int32_t count;
    int32_t subintervals;
    int32_t components;
};

// One open ephemeris. The fields from startJd to earthFactor are the
// header fields; a "KQ" file carries exactly them (see docs/data-files.md).
// After Open (and ReadIntoMemory) the state is read-only: the record being
// evaluated lives in a per-thread cache (see Evaluate), so any number of
// threads may query one reader at once.
struct Reader {
    double startJd, endJd, stepDays;
    double au;     // km per AU
    double emrat;  // Earth/Moon mass ratio
    ComponentPointer pointers[kPointerEntries];
    int32_t deNumber;
    int32_t numberOfConstants;
    int32_t coefficientSize;  // 8; 0 marks a state that is not ready
    int32_t coefficientsPerRecord;
    int32_t recordBytes;
    double moonFactor;   // 1 / (1 + emrat)
    double earthFactor;  // emrat / (1 + emrat)
    platform::Source source;  // the file, or its bytes in memory
    bool imageOnly;           // read into memory by ReadIntoMemory: queries answer kNotReady
    uint64_t serial;  // unique per Open in the process: keys the per-thread record cache
};

// "KQ" header: "KQ", 10 reserved bytes, a little-endian uint32 length L at
// offset 12, then L bytes of header fields from offset 16 (kKqFieldBytes for
// the complete set; see kvxlib.h and docs/data-files.md).
inline constexpr int kKqLengthOffset = 12;
inline constexpr int kKqFieldsOffset = 16;
inline constexpr int kKqFieldBytes = 284;

// Opens a DE or KQ file; prints one diagnostic line and returns null on
// failure. The result is released with Close.
Reader *Open(const char *path);

// As Open, over an already open source (a file, or bytes in memory that the
// caller keeps alive until Close); `name` stands for the path in the
// diagnostics. The reader takes the source over, also on failure.
Reader *OpenFrom(platform::Source source, const char *name);

// Reads the whole file into memory and closes the stream (see the .cpp for
// the effect on queries). Returns true on success; on failure the reader
// keeps reading from the file.
bool ReadIntoMemory(Reader *r);

// Position then velocity of JPL body `target` (1..15) relative to `center`
// (1..12) at dynamical Julian date jd: AU and AU/day for bodies, radians and
// radians/day for nutations (14) and librations (15). Velocities are computed
// when `velocity` is set (else left 0). Returns a Code.
// Thread rule: the record is read with a positioned read into a cache of the
// calling thread (one record per thread and handle slot), never through a
// shared file position or buffer; concurrent calls on one reader are safe
// and give the same bits as one thread. Close must not race with queries.
int Evaluate(const Reader *r, double jd, int target, int center, double pv[6], bool velocity);

// Number of the record the calling thread has cached for r, -1 when none
// (two queries inside one record read the file once).
int32_t CachedRecord(const Reader *r);

// Closes the source (the file, or frees the memory image) and the state.
void Close(Reader *r);

// JPL body number of a library body code (-31 librations, -30 nutations,
// -3 Earth, -2 Sun, -1 Moon, 0..7 Mercury..Pluto); 0 when there is none.
int JplNumber(int code);

// ---- process-wide handles, set by start-up -----------------------------

// Opens the main ephemeris (replacing none: CloseMain first) and, when
// onMemory, reads it into memory. Returns true when it opened.
bool OpenMain(const char *path, bool onMemory);
void CloseMain();
Reader *MainHandle();

// The Moon source: a DE-format file (the JPL file itself or "moon.xyz"),
// never read into memory. Returns non-zero when it opened.
int LoadMoonFile(const char *path);
// The Moon handle from an already open source (see OpenFrom).
int LoadMoonFrom(platform::Source source, const char *name);
void CloseMoon();
Reader *MoonHandle();

// As Query (jpl_query.h) but on the Moon handle and with JPL body numbers
// (3 Earth, 10 Moon, 11 Sun, 12 barycentre, 13 Earth-Moon barycentre as a
// target): 1 and the outputs filled on success, 0 otherwise.
int MoonQuery(int jplTarget, double jde, int jplCenter, double pos[3], double vel[3]);

}  // namespace kvx::jpl
