// Meteor-shower catalogue: a line parser for the comma-separated text format
// (number, four quoted texts, five numbers, an integer, a number, an
// optional integer), an array grown ten records at a time, and the exports.
#include "calendar/meteor.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "platform/file.h"

namespace kvx::meteor {

namespace {

constexpr int kLineBytes = 256;
constexpr int kGrowth = 10;

MeteorInfo *gTable = nullptr;
int32_t gCount = -1;

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

const char *SkipSpace(const char *p) {
    while (IsSpace(*p)) ++p;
    return p;
}

// "," with whitespace after it; null when the comma is missing.
const char *Comma(const char *p) {
    if (*p != ',') return nullptr;
    return SkipSpace(p + 1);
}

// A quoted text of at most `limit` characters copied into dst (limit + 1
// bytes, or skipped when dst is null and limit < 0); whitespace after it is
// skipped. Null when a quote is missing or the text is too long.
const char *Quoted(const char *p, char *dst, int limit) {
    if (*p != '"') return nullptr;
    const char *start = ++p;
    while (*p && *p != '"') ++p;
    if (*p != '"') return nullptr;
    const long length = p - start;
    if (limit >= 0) {
        if (length > limit) return nullptr;
        std::memcpy(dst, start, static_cast<size_t>(length));
        dst[length] = '\0';
    }
    return SkipSpace(p + 1);
}

// A number read with strtod; the scan then passes over digits, '.' and '-'
// (not over exponents or '+') and the whitespace after them.
const char *Number(const char *p, double *value) {
    *value = std::strtod(p, nullptr);
    while (IsDigit(*p) || *p == '.' || *p == '-') ++p;
    return SkipSpace(p);
}

// A decimal integer; the scan passes over its digits and the whitespace.
const char *Integer(const char *p, int32_t *value) {
    *value = static_cast<int32_t>(std::strtol(p, nullptr, 10));
    while (IsDigit(*p)) ++p;
    return SkipSpace(p);
}

}  // namespace

bool ParseLine(const char *line, MeteorInfo *out) {
    if (!line || !out) return false;
    MeteorInfo m{};
    const char *p = SkipSpace(line);
    if (!IsDigit(*p)) return false;  // empty, comment or not a record
    p = Integer(p, &m.number);
    if (!(p = Comma(p)) || !(p = Quoted(p, m.code, 3))) return false;
    if (!(p = Comma(p)) || !(p = Quoted(p, m.name, 31))) return false;
    if (!(p = Comma(p)) || !(p = Quoted(p, m.name2, 31))) return false;
    if (!(p = Comma(p)) || !(p = Quoted(p, nullptr, -1))) return false;
    for (double &v : m.value)
        if (!(p = Comma(p)) || !(p = Number(p, &v))) return false;
    if (!(p = Comma(p))) return false;
    p = Integer(p, &m.intValue);
    if (!(p = Comma(p))) return false;
    p = Number(p, &m.value6);
    m.optional = -1;
    if (*p == ',') {
        p = Integer(SkipSpace(p + 1), &m.optional);
    }
    if (*p != '\0') return false;
    *out = m;
    return true;
}

bool LoadFile(const char *path) { return platform::LoadFromPath(path, platform::OpenMode::kText, LoadFrom); }

bool LoadFrom(const platform::Source &source) {
    platform::LineReader lines(source);
    int32_t capacity = kGrowth, count = 0;
    auto *table = static_cast<MeteorInfo *>(std::malloc(sizeof(MeteorInfo) * capacity));
    if (!table) return false;
    char line[kLineBytes];
    while (lines.Next(line, sizeof line)) {
        MeteorInfo m;
        if (!ParseLine(line, &m)) continue;
        if (count == capacity) {
            auto *grown = static_cast<MeteorInfo *>(std::realloc(table, sizeof(MeteorInfo) * (capacity + kGrowth)));
            if (!grown) {
                std::free(table);
                return false;
            }
            table = grown;
            capacity += kGrowth;
        }
        table[count++] = m;
    }
    if (count == 0) {
        std::free(table);
        return false;
    }
    gTable = table;
    gCount = count;
    return true;
}

void Release() {
    std::free(gTable);
    gTable = nullptr;
}

}  // namespace kvx::meteor

extern "C" int32_t GetMeteorInfoCount(void) { return kvx::meteor::gCount; }

extern "C" const MeteorInfo *GetMeteorInfo(int32_t index) {
    using namespace kvx::meteor;
    if (!gTable || index >= gCount) return nullptr;
    const auto base = reinterpret_cast<uintptr_t>(gTable);
    return reinterpret_cast<const MeteorInfo *>(base + static_cast<uintptr_t>(static_cast<intptr_t>(index)) *
                                                           sizeof(MeteorInfo));
}

extern "C" int32_t IsValidMeteorFile(void) { return kvx::meteor::gTable != nullptr ? 1 : 0; }
