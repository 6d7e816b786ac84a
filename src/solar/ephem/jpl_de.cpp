// JPL DE ephemeris reader: opener (DE header and the "KQ" variant), record
// fetch with positioned reads into a per-thread one-record cache, Chebyshev
// evaluation with velocities, the target/centre arithmetic of the JPL PLEPH
// routine, and the two handles.
//
// The Chebyshev layout and the Earth/Moon split follow the JPL export
// software (Standish, "JPL Planetary and Lunar Ephemerides", 1998):
// coefficients of component i start at pointer[i].first (1-based, the two
// record dates occupying positions 1 and 2), one block of count x
// components coefficients per sub-interval; Earth = EMB - Moon/(1+EMRAT),
// barycentric Moon = EMB + Moon EMRAT/(1+EMRAT).
#include "solar/ephem/jpl_de.h"

#include <atomic>
#include <bit>
#include <cmath>
#include <cstdlib>

#include "kvxlib.h"
#include "platform/file.h"
#include "solar/ephem/jpl_query.h"
#include "platform/thread_cache.h"

namespace kvx::jpl {

namespace {

// Offset of the coverage dates in the first header record: after three
// 84-character title lines and 400 six-character constant names.
constexpr long kHeaderOffset = 2652;
// Coverage spans longer than this many records are refused (no real file
// comes near; it keeps record numbers and offsets far from overflow).
constexpr double kMaxRecords = 1e8;

double LeDouble(const unsigned char *p) {
    uint64_t u = 0;
    for (int i = 7; i >= 0; --i) u = (u << 8) | p[i];
    return std::bit_cast<double>(u);
}

int32_t LeInt32(const unsigned char *p) {
    const uint32_t u = static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 |
                       static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24;
    return static_cast<int32_t>(u);
}

void ToNativeDoubles(double *d, int n) {
    if constexpr (std::endian::native == std::endian::big) {
        for (int i = 0; i < n; ++i) d[i] = LeDouble(reinterpret_cast<const unsigned char *>(&d[i]));
    } else {
        (void)d;
        (void)n;
    }
}

bool ReadBytes(const platform::Source &s, int64_t offset, void *dst, size_t n) {
    return platform::ReadAt(s, offset, dst, n) == static_cast<int64_t>(n);
}

bool CoverageUsable(double start, double end, double step) {
    return std::isfinite(start) && std::isfinite(end) && std::isfinite(step) && step > 0.0 && start <= end &&
           (end - start) / step <= kMaxRecords;
}

// Coefficients per record by DE version; 0 for a version not supported.
int32_t CoefficientsForVersion(int32_t de) {
    switch (de) {
    case 200: return 826;
    case 405: case 430: case 431: case 432: case 433: case 434: case 435: case 436: case 438: return 1018;
    case 406: return 728;
    default: return 0;
    }
}

// The DE header proper; returns a Code.
int ParseJplHeader(Reader *r) {
    unsigned char h[3 * 8 + 4 + 2 * 8 + 12 * 12 + 4 + 12];
    if (!ReadBytes(r->source, kHeaderOffset, h, sizeof h)) return kReadFailed;
    const unsigned char *p = h;
    r->startJd = LeDouble(p), r->endJd = LeDouble(p + 8), r->stepDays = LeDouble(p + 16);
    p += 24;
    r->numberOfConstants = LeInt32(p);
    p += 4;
    r->au = LeDouble(p), r->emrat = LeDouble(p + 8);
    p += 16;
    for (int i = 0; i < 12; ++i, p += 12)
        r->pointers[i] = {LeInt32(p), LeInt32(p + 4), LeInt32(p + 8), i == 11 ? 2 : 3};
    r->deNumber = LeInt32(p);
    p += 4;
    r->pointers[12] = {LeInt32(p), LeInt32(p + 4), LeInt32(p + 8), 3};
    r->moonFactor = 1.0 / (1.0 + r->emrat);
    r->earthFactor = r->emrat / (1.0 + r->emrat);
    if (r->deNumber < 200 || r->deNumber > 438) return kBadVersion;
    const int32_t coefficients = CoefficientsForVersion(r->deNumber);
    if (coefficients == 0) return kBadVersion;
    // A header whose coverage cannot be turned into record numbers is as
    // unreadable as a short one.
    if (!CoverageUsable(r->startJd, r->endJd, r->stepDays)) return kReadFailed;
    r->coefficientsPerRecord = coefficients;
    r->recordBytes = coefficients * 8;
    r->coefficientSize = 8;
    return kOk;
}

// The "KQ" variant: the header fields in the reader's order, little-endian,
// without padding. A length below the full set fills a prefix (the rest stays
// zero, so the state is not ready); bytes beyond the set are not read. A
// state whose record geometry is inconsistent is kept but not ready.
bool ParseKqHeader(Reader *r) {
    unsigned char len[4];
    if (!ReadBytes(r->source, kKqLengthOffset, len, 4)) return false;
    const uint32_t length = static_cast<uint32_t>(LeInt32(len));
    unsigned char f[kKqFieldBytes] = {};
    const size_t take = length < static_cast<uint32_t>(kKqFieldBytes) ? length : kKqFieldBytes;
    if (!ReadBytes(r->source, kKqFieldsOffset, f, take)) return false;
    const unsigned char *p = f;
    r->startJd = LeDouble(p), r->endJd = LeDouble(p + 8), r->stepDays = LeDouble(p + 16);
    r->au = LeDouble(p + 24), r->emrat = LeDouble(p + 32);
    p += 40;
    for (auto &c : r->pointers) {
        c = {LeInt32(p), LeInt32(p + 4), LeInt32(p + 8), LeInt32(p + 12)};
        p += 16;
    }
    r->deNumber = LeInt32(p);
    r->numberOfConstants = LeInt32(p + 4);
    r->coefficientSize = LeInt32(p + 8);
    r->coefficientsPerRecord = LeInt32(p + 12);
    r->recordBytes = LeInt32(p + 16);
    r->moonFactor = LeDouble(p + 20);
    r->earthFactor = LeDouble(p + 28);
    const bool ready = r->coefficientSize == 8 && r->coefficientsPerRecord >= 1 &&
                       r->coefficientsPerRecord <= kBufferDoubles && r->recordBytes == r->coefficientsPerRecord * 8 &&
                       CoverageUsable(r->startJd, r->endJd, r->stepDays);
    if (!ready) r->coefficientSize = 0;
    return true;
}

// The record cache of one thread: the coefficients of the last record read
// for each of two handle slots (the main ephemeris and the Moon file open
// one after the other and so take different slots). Keyed by the reader's
// serial, which no other reader ever gets, so a stale entry of a closed
// reader is never taken for a new one. Zero-initialised (a thread's cache
// object, platform/thread_cache.h): serial 0 is empty.
struct RecordCache {
    uint64_t serial;
    int32_t record;
    double coefficients[kBufferDoubles];
};

std::atomic<uint64_t> gNextSerial{1};

struct RecordCaches {
    RecordCache slot[2];
};

RecordCache &CacheFor(const Reader *r) { return platform::ThreadCache<RecordCaches>().slot[r->serial & 1]; }

// Reads record n into the calling thread's cache and points *coefficients
// at it; returns a Code. Kept out of line: the hit test (Locate) is the
// common path, and inlined into the Chebyshev evaluation the read would cost
// that loop its registers.
[[gnu::noinline]] int FetchRecord(const Reader *r, int32_t n, const double **coefficients) {
    RecordCache &c = CacheFor(r);
    *coefficients = c.coefficients;
    c.serial = 0;  // whatever happens below, the slot no longer holds a whole record
    const int64_t pos = static_cast<int64_t>(n) * r->recordBytes;
    const size_t want = static_cast<size_t>(r->coefficientsPerRecord);
    if (pos < 0) {
        std::fprintf(stderr, "getbuffer: seek error: pos=%lld\n", static_cast<long long>(pos));
        return kReadFailed;
    }
    const int64_t bytes = platform::ReadAt(r->source, pos, c.coefficients, want * 8);
    const size_t got = bytes < 0 ? 0 : static_cast<size_t>(bytes) / 8;
    if (got != want) {
        std::fprintf(stderr, "getbuffer: read error: pos=%lld size=%d num=%d\n", static_cast<long long>(pos),
                     r->coefficientSize, static_cast<int>(got));
        return kReadFailed;
    }
    ToNativeDoubles(c.coefficients, static_cast<int>(want));
    c.serial = r->serial;
    c.record = n;
    return kOk;
}

// The record of one query and the instant's place in it. Every component of
// a query comes from the same record, so its number, the fraction and the
// cache hit test are worked out once per query; a record that is not
// cached is read by the first component that needs it.
struct RecordSpot {
    int32_t n;
    double frac;
    const double *coefficients;  // null until the record is in the cache
};

// jd must lie inside the coverage: t is then at least 0 and below the
// record limit, so truncation is the floor.
RecordSpot Locate(const Reader *r, double jd) {
    const double t = (jd - r->startJd) / r->stepDays;
    const int32_t whole = static_cast<int32_t>(t);
    // At the end of the coverage the instant is the end of the last record.
    const RecordSpot spot = jd == r->endJd ? RecordSpot{whole + 2 - 1, 1.0, nullptr}
                                           : RecordSpot{whole + 2, t - whole, nullptr};
    const RecordCache &c = CacheFor(r);
    return {spot.n, spot.frac, c.serial == r->serial && c.record == spot.n ? c.coefficients : nullptr};
}

// Chebyshev evaluation of pointer entry `entry` (0-based) at the instant of
// `spot`: up to three coordinates into pv[0..2] and their rates (per day)
// into pv[3..5], in the file's units. Returns a Code.
int EvaluateComponent(const Reader *r, RecordSpot &spot, int entry, bool wantVelocity, double pv[6]) {
    const ComponentPointer &c = r->pointers[entry];
    // A component whose coefficients do not lie inside the record is treated
    // as missing, like one with no coefficients at all.
    // (Each factor is bounded before the product, which cannot overflow then.)
    if (c.first < 1 || c.count < 1 || c.subintervals < 1 || c.components < 1 || c.components > 3 ||
        c.count > kBufferDoubles || c.subintervals > kBufferDoubles || c.first > kBufferDoubles)
        return kBadTarget;
    const int64_t span = static_cast<int64_t>(c.count) * c.components * c.subintervals;
    if (c.first - 1 + span > r->coefficientsPerRecord) return kBadTarget;

    const double frac = spot.frac;
    if (!(frac >= 0.0 && frac <= 1.0)) return kOutOfRange;
    if (!spot.coefficients && FetchRecord(r, spot.n, &spot.coefficients) != kOk) {
        spot.coefficients = nullptr;
        std::fprintf(stderr, "getbuffer failed: lRec=%d\n", spot.n);
        return kReadFailed;
    }
    const double *record = spot.coefficients;

    const double scaled = frac * c.subintervals;
    int32_t sub = static_cast<int32_t>(scaled);  // scaled >= 0: truncation is the floor
    if (sub >= c.subintervals) sub = c.subintervals - 1;  // frac = 1: end of the last sub-interval
    const double tc = 2.0 * (scaled - sub) - 1.0;

    double tp[kBufferDoubles], tv[kBufferDoubles];
    tp[0] = 1.0;
    if (c.count > 1) tp[1] = tc;
    for (int k = 2; k < c.count; ++k) tp[k] = 2.0 * tc * tp[k - 1] - tp[k - 2];
    if (wantVelocity) {
        tv[0] = 0.0;
        if (c.count > 1) tv[1] = 1.0;
        for (int k = 2; k < c.count; ++k) tv[k] = 2.0 * tc * tv[k - 1] + 2.0 * tp[k - 1] - tv[k - 2];
    }
    const double rate = 2.0 * c.subintervals / r->stepDays;
    const double *coef = record + (c.first - 1) + static_cast<int64_t>(sub) * c.count * c.components;
    for (int i = 0; i < 6; ++i) pv[i] = 0.0;
    for (int i = 0; i < c.components; ++i) {
        const double *a = coef + i * c.count;
        double p = 0.0;
        for (int k = c.count - 1; k >= 0; --k) p += a[k] * tp[k];
        pv[i] = p;
        if (wantVelocity) {
            double v = 0.0;
            for (int k = c.count - 1; k >= 1; --k) v += a[k] * tv[k];
            pv[3 + i] = v * rate;
        }
    }
    if (entry < 11)
        for (int i = 0; i < 6; ++i) pv[i] /= r->au;
    return kOk;
}

// Pointer entry (0-based) of a JPL body number that has its own component.
int EntryOf(int jpl) {
    switch (jpl) {
    case 13: return 2;   // Earth-Moon barycentre
    case 14: return 11;  // nutations
    case 15: return 12;  // librations
    default: return jpl - 1;
    }
}

Reader *gMain = nullptr;
Reader *gMoon = nullptr;

int QueryHandle(const Reader *r, int target, double jde, int center, double pos[3], double vel[3]) {
    if (!r || !pos) return 0;
    double pv[6];
    if (Evaluate(r, jde, target, center, pv, vel != nullptr) != kOk) return 0;
    for (int i = 0; i < 3; ++i) pos[i] = pv[i];
    if (vel)
        for (int i = 0; i < 3; ++i) vel[i] = pv[3 + i];
    return 1;
}

}  // namespace

Reader *Open(const char *path) {
    platform::Source source = platform::OpenSource(path, platform::OpenMode::kBinary);
    if (!platform::IsOpen(source)) {
        std::fprintf(stderr, "open %s failed\n", path ? path : "(null)");
        return nullptr;
    }
    return OpenFrom(source, path);
}

Reader *OpenFrom(platform::Source source, const char *name) {
    auto *r = static_cast<Reader *>(std::calloc(1, sizeof(Reader)));
    if (!r) {
        std::fputs("calloc failed\n", stderr);
        platform::CloseSource(&source);
        return nullptr;
    }
    r->serial = gNextSerial.fetch_add(1, std::memory_order_relaxed);
    r->source = source;
    if (!name) name = "(null)";
    unsigned char head[12];
    if (!ReadBytes(r->source, 0, head, sizeof head)) {
        std::fprintf(stderr, "read %s faield\n", name);
        Close(r);
        return nullptr;
    }
    if (head[0] == 'J' && head[1] == 'P') {
        if (ParseJplHeader(r) != kOk) {
            std::fprintf(stderr, "read JPL header failed. file=%s\n", name);
            Close(r);
            return nullptr;
        }
        return r;
    }
    if (head[0] == 'K' && head[1] == 'Q') {
        if (!ParseKqHeader(r)) {
            std::fprintf(stderr, "read %s faield\n", name);
            Close(r);
            return nullptr;
        }
        return r;
    }
    std::fprintf(stderr, "Unknown file format. file=%s\n", name);
    Close(r);
    return nullptr;
}

// Reading into memory replaces the file by its image and marks the handle
// imageOnly, which Evaluate checks first: a handle read into memory answers
// every query with kNotReady, and callers fall back to their other sources.
// This is the library's long-standing behaviour with "OnMemory" and is kept
// on purpose.
bool ReadIntoMemory(Reader *r) {
    if (!r || !platform::IsOpen(r->source) || r->imageOnly) return false;
    size_t got = 0;
    switch (platform::LoadIntoMemory(&r->source, &got)) {
    case platform::LoadResult::kOk: r->imageOnly = true; return true;
    case platform::LoadResult::kNoLength: std::fputs("ERROR: get file size failed\n", stderr); break;
    case platform::LoadResult::kNoMemory: std::fputs("ERROR: calloc failed\n", stderr); break;
    case platform::LoadResult::kShortRead:
        std::fprintf(stderr, "ERROR: read expect %lld byte but got %zu\n",
                     static_cast<long long>(platform::SourceLength(r->source)), got);
        break;
    }
    std::fputs("ERROR: can't load JPLDE to memory", stderr);
    return false;
}

int Evaluate(const Reader *r, double jd, int target, int center, double pv[6], bool velocity) {
    if (!r || !platform::IsOpen(r->source) || r->imageOnly || r->coefficientSize == 0) return kNotReady;
    if (!(jd >= r->startJd && jd <= r->endJd)) return kOutOfRange;
    if (target <= 0 || center <= 0 || target >= 16) return kBadTarget;
    if (center > 12) return kBadCentre;
    if (target == center) return kBadTargetCentre;

    RecordSpot spot = Locate(r, jd);
    if (target == 14 || target == 15) return EvaluateComponent(r, spot, EntryOf(target), velocity, pv);

    // Earth and the barycentric Moon, from the Earth-Moon barycentre B and the
    // geocentric Moon m, when the target or the centre needs them.
    double earth[6] = {}, moonBary[6] = {}, moonGeo[6] = {};
    if (target == 3 || target == 10 || center == 3 || center == 10) {
        double emb[6];
        int code = EvaluateComponent(r, spot, 2, velocity, emb);
        if (code == kOk) code = EvaluateComponent(r, spot, 9, velocity, moonGeo);
        if (code != kOk) return code;
        for (int i = 0; i < 6; ++i) {
            earth[i] = emb[i] - r->moonFactor * moonGeo[i];
            moonBary[i] = emb[i] + r->earthFactor * moonGeo[i];
        }
    }
    if (target == 3) {
        if (center == 10) {
            for (int i = 0; i < 6; ++i) pv[i] = earth[i] - moonBary[i];
            return kOk;
        }
        for (int i = 0; i < 6; ++i) pv[i] = earth[i];
    } else if (target == 10) {
        if (center == 3) {
            for (int i = 0; i < 6; ++i) pv[i] = moonGeo[i];
            return kOk;
        }
        for (int i = 0; i < 6; ++i) pv[i] = moonBary[i];
    } else if (target == 12) {
        for (int i = 0; i < 6; ++i) pv[i] = 0.0;
    } else {
        const int code = EvaluateComponent(r, spot, EntryOf(target), velocity, pv);
        if (code != kOk) {
            std::fprintf(stderr, "getpv faield: jd=%f target=%d\n", jd, target);
            return code;
        }
    }

    if (center == 12) return kOk;
    double c[6];
    if (center == 3) {
        for (int i = 0; i < 6; ++i) c[i] = earth[i];
    } else if (center == 10) {
        for (int i = 0; i < 6; ++i) c[i] = moonBary[i];
    } else {
        const int code = EvaluateComponent(r, spot, EntryOf(center), velocity, c);
        if (code != kOk) return code;
    }
    for (int i = 0; i < 6; ++i) pv[i] -= c[i];
    return kOk;
}

void Close(Reader *r) {
    if (!r) return;
    platform::CloseSource(&r->source);
    std::free(r);
}

int32_t CachedRecord(const Reader *r) {
    if (!r) return -1;
    const RecordCache &c = CacheFor(r);
    return c.serial == r->serial ? c.record : -1;
}

int JplNumber(int code) {
    switch (code) {
    case -31: return 15;
    case -30: return 14;
    case -3: return 3;
    case -2: return 11;
    case -1: return 10;
    case 0: return 1;  // Mercury
    case 1: return 2;  // Venus
    case 2: return 4;  // Mars
    case 3: return 5;  // Jupiter
    case 4: return 6;  // Saturn
    case 5: return 7;  // Uranus
    case 6: return 8;  // Neptune
    case 7: return 9;  // Pluto
    default: return 0;
    }
}

bool OpenMain(const char *path, bool onMemory) {
    gMain = Open(path);
    if (gMain && onMemory) ReadIntoMemory(gMain);
    return gMain != nullptr;
}

void CloseMain() {
    Close(gMain);
    gMain = nullptr;
}

Reader *MainHandle() { return gMain; }

int LoadMoonFile(const char *path) {
    gMoon = Open(path);
    return gMoon != nullptr;
}

int LoadMoonFrom(platform::Source source, const char *name) {
    gMoon = OpenFrom(source, name);
    return gMoon != nullptr;
}

void CloseMoon() {
    Close(gMoon);
    gMoon = nullptr;
}

Reader *MoonHandle() { return gMoon; }

int Query(int target, double jde, int center, double pos[3], double vel[3]) {
    const int t = JplNumber(target), c = JplNumber(center);
    if (t == 0 || c == 0) return 0;
    return QueryHandle(gMain, t, jde, c, pos, vel);
}

int MoonQuery(int jplTarget, double jde, int jplCenter, double pos[3], double vel[3]) {
    return QueryHandle(gMoon, jplTarget, jde, jplCenter, pos, vel);
}

}  // namespace kvx::jpl

extern "C" int32_t GetJplDeVersion(void) {
    const kvx::jpl::Reader *r = kvx::jpl::MainHandle();
    return r ? r->deNumber : -1;
}

extern "C" int32_t IsValidMoonXyzFile(void) { return kvx::jpl::MoonHandle() != nullptr ? 1 : 0; }
