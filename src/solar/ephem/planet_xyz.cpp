// Reader of the planet position file. Rows are six little-endian doubles
// (48 bytes). Each block starts with a header row {file body number, first
// JD, last JD, step in days, rows including the header, row size 48}
// followed by its data rows {x, y, z, vx, vy, vz}; blocks follow each other
// and at most 13 are read.
#include "solar/ephem/planet_xyz.h"

#include <bit>
#include <cmath>
#include <cstdint>

#include "kvxlib.h"
#include "platform/file.h"

namespace kvx::planetxyz {

namespace {

constexpr int kRowBytes = 48;
constexpr int kMaxEntries = 13;
constexpr int kWindow = 10;  // points of the Lagrange interpolation
// Block sizes beyond this are treated as a malformed chain (2^31 rows of 48
// bytes is already 100 GB).
constexpr double kMaxRows = 2147483647.0;

struct Entry {
    int32_t body;
    double first, last, step;
    int32_t headerRow;
    int32_t dataRows;
    int32_t rowSize;
};

Entry gEntries[kMaxEntries];
int gCount = 0;
// The file, or its image after "OnMemory" (or bytes given to OpenFrom).
platform::Source gSource{};

double LeDouble(const unsigned char *p) {
    uint64_t u = 0;
    for (int i = 7; i >= 0; --i) u = (u << 8) | p[i];
    return std::bit_cast<double>(u);
}

// Library body code of a file body number; false for an unknown number.
// File body numbers are 100 (place in kCodes + 1) + 99: 199 Mercury ...
// 1399 Haumea.
constexpr int32_t kCodes[kMaxEntries] = {0, 1, -3, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};

bool BodyCode(int32_t fileNumber, int32_t *code) {
    if (fileNumber % 100 != 99 || fileNumber < 199 || fileNumber > 1399) return false;
    *code = kCodes[fileNumber / 100 - 1];
    return true;
}

int32_t FileNumber(int32_t code) {
    for (int i = 0; i < kMaxEntries; ++i)
        if (kCodes[i] == code) return 100 * (i + 1) + 99;
    return 0;
}

// Reads `rows` rows starting at byte offset `offset` into out (6 doubles per
// row). A positioned read (or a copy from the image): lookups share no file
// position, so they may run in several threads at once.
bool ReadRows(int64_t offset, int rows, double *out) {
    unsigned char raw[kWindow * kRowBytes];
    const size_t bytes = static_cast<size_t>(rows) * kRowBytes;
    if (rows < 1 || rows > kWindow || offset < 0) return false;
    if (platform::ReadAt(gSource, offset, raw, bytes) != static_cast<int64_t>(bytes)) return false;
    for (int i = 0; i < rows * 6; ++i) out[i] = LeDouble(raw + 8 * i);
    return true;
}

const Entry *Find(int body) {
    for (int i = 0; i < gCount; ++i)
        if (gEntries[i].body == body) return &gEntries[i];
    return nullptr;
}

// A header row whose numbers cannot describe a block of this file.
bool Plausible(const double *h) {
    for (int i = 0; i < 6; ++i)
        if (!std::isfinite(h[i])) return false;
    const double rows = std::floor(h[4] + 1e-6);
    return h[3] > 0.0 && h[1] <= h[2] && rows >= 1.0 && rows <= kMaxRows;
}

}  // namespace

int Open(const char *path, bool onMemory) {
    return OpenFrom(platform::OpenSource(path, platform::OpenMode::kBinary), onMemory);
}

int OpenFrom(platform::Source source, bool onMemory) {
    if (!platform::IsOpen(source)) return 0;
    gSource = source;
    gCount = 0;
    int64_t row = 0;
    while (gCount < kMaxEntries) {
        unsigned char raw[kRowBytes];
        if (platform::ReadAt(gSource, row * kRowBytes, raw, kRowBytes) != kRowBytes) break;
        double h[6];
        for (int i = 0; i < 6; ++i) h[i] = LeDouble(raw + 8 * i);
        int32_t code = 0;
        const double number = std::floor(h[0] + 1e-6);
        if (!(number >= 0.0 && number <= 2000.0) || !BodyCode(static_cast<int32_t>(number), &code) ||
            !Plausible(h) || std::floor(h[5] + 1e-6) != kRowBytes || row + std::floor(h[4] + 1e-6) > kMaxRows) {
            // An unknown body, an absurd header or a row size other than 48:
            // the whole chain is refused.
            platform::CloseSource(&gSource);
            gCount = 0;
            return 0;
        }
        const int32_t rows = static_cast<int32_t>(std::floor(h[4] + 1e-6));
        gEntries[gCount++] = {code, h[1], h[2], h[3], static_cast<int32_t>(row), rows - 1, kRowBytes};
        row += rows;
    }
    // An empty file stays open (there is nothing to read in); a failed read
    // keeps reading from the file.
    if (onMemory && platform::SourceLength(gSource) > 0) platform::LoadIntoMemory(&gSource, nullptr);
    return 1;
}

int Lookup(int body, double jd, double pos[3], double vel[3]) {
    const Entry *e = Find(body);
    if (!e || !pos || !(jd >= e->first && jd <= e->last)) return 0;
    const double s = e->first, h = e->step;
    const int32_t n = e->dataRows;
    const double fi = std::floor((jd - s) / h);
    if (!(fi >= 0.0 && fi <= n)) return 0;  // the header's last date lies beyond its rows
    const int32_t i = static_cast<int32_t>(fi);
    const int64_t base = static_cast<int64_t>(e->headerRow) * kRowBytes + kRowBytes;

    if (std::fabs(s + i * h - jd) < 1e-8) {  // a tabulated date: the row itself
        double row[6];
        if (i >= n || !ReadRows(base + static_cast<int64_t>(i) * kRowBytes, 1, row)) return 0;
        for (int k = 0; k < 3; ++k) pos[k] = row[k];
        if (vel)
            for (int k = 0; k < 3; ++k) vel[k] = row[3 + k];
        return 1;
    }

    // Ten rows around jd; at the ends of the block the first or last ten.
    if (n < kWindow) return 0;
    const int32_t j = i < 4 ? 0 : (i + 5 < n ? i - 4 : n - kWindow);
    double rows[kWindow * 6];
    if (!ReadRows(base + static_cast<int64_t>(j) * kRowBytes, kWindow, rows)) return 0;
    double xs[kWindow], ys[kWindow];
    for (int k = 0; k < kWindow; ++k) xs[k] = s + (j + k) * h;
    const int components = vel ? 6 : 3;
    for (int c = 0; c < components; ++c) {
        for (int k = 0; k < kWindow; ++k) ys[k] = rows[6 * k + c];
        const double v = Lagrange(jd, kWindow, xs, ys);
        if (c < 3)
            pos[c] = v;
        else
            vel[c - 3] = v;
    }
    return 1;
}

int Range(int body, double *first, double *last) {
    const Entry *e = Find(body);
    if (!e) return 0;
    if (first) *first = e->first;
    if (last) *last = e->last;
    return 1;
}

bool Block(int index, BlockInfo *out) {
    if (index < 0 || index >= gCount) return false;
    const Entry &e = gEntries[index];
    *out = {e.body, FileNumber(e.body), e.first, e.last, e.step, e.dataRows};
    return true;
}

void Release() {
    platform::CloseSource(&gSource);
    gCount = 0;
}

}  // namespace kvx::planetxyz

extern "C" int32_t IsValidPlanetXyzFile(void) {
    return kvx::planetxyz::gSource.kind == kvx::platform::SourceKind::kFile ? 1 : 0;
}
