// A small JSON reader for the CLI tests: kvx --json output parsed into a tree, so a test asks for doc["moon"]["age"]
// rather than searching text. Malformed text fails the test that parses it and gives a null value.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kvx::test {

class Json {
public:
    enum class Kind { kNull, kBool, kNumber, kString, kArray, kObject };

    static Json Parse(const std::string &text) {
        std::size_t at = 0;
        Json value = ParseValue(text, at);
        SkipSpace(text, at);
        if (at != text.size()) ADD_FAILURE() << "JSON: trailing text at " << at << ": " << text.substr(at, 40);
        return value;
    }

    Kind kind() const { return kind_; }
    bool Has(const std::string &key) const { return kind_ == Kind::kObject && members_->count(key) != 0; }
    // A missing member or index fails the test and reads as null.
    const Json &operator[](const std::string &key) const {
        if (Has(key)) return members_->at(key);
        ADD_FAILURE() << "JSON: no member '" << key << "'";
        return Null();
    }
    const Json &operator[](std::size_t i) const {
        if (kind_ == Kind::kArray && i < items_->size()) return (*items_)[i];
        ADD_FAILURE() << "JSON: no element " << i;
        return Null();
    }
    std::size_t size() const {
        return kind_ == Kind::kArray ? items_->size() : kind_ == Kind::kObject ? members_->size() : 0;
    }
    double num() const {
        EXPECT_EQ(kind_, Kind::kNumber) << "JSON: not a number";
        return number_;
    }
    const std::string &str() const {
        EXPECT_EQ(kind_, Kind::kString) << "JSON: not a string";
        return string_;
    }
    bool boolean() const { return kind_ == Kind::kBool && number_ != 0.0; }

private:
    static const Json &Null() {
        static const Json null;
        return null;
    }
    static void SkipSpace(const std::string &t, std::size_t &at) {
        while (at < t.size() && (t[at] == ' ' || t[at] == '\n' || t[at] == '\r' || t[at] == '\t')) ++at;
    }
    static bool Literal(const std::string &t, std::size_t &at, const std::string &word) {
        if (t.compare(at, word.size(), word) != 0) return false;
        return at += word.size(), true;
    }
    static std::string ParseString(const std::string &t, std::size_t &at) {
        std::string s;
        for (++at; at < t.size() && t[at] != '"'; ++at) {
            const char e = t[at] == '\\' ? t[++at] : '\0';
            if (e == 'u') {  // the CLI escapes only control characters
                s += static_cast<char>(std::strtol(t.substr(at + 1, 4).c_str(), nullptr, 16));
                at += 4;
            } else {
                s += !e ? t[at] : e == 'n' ? '\n' : e == 't' ? '\t' : e == 'r' ? '\r' : e == 'b' ? '\b' : e == 'f' ? '\f' : e;
            }
        }
        if (at >= t.size()) ADD_FAILURE() << "JSON: unterminated string";
        ++at;
        return s;
    }
    // An object's members or an array's items up to the closing bracket.
    static void ParseContainer(const std::string &t, std::size_t &at, Json &v) {
        const bool object = v.kind_ == Kind::kObject;
        const char close = object ? '}' : ']';
        SkipSpace(t, ++at);
        if (at < t.size() && t[at] == close) return void(++at);
        while (at < t.size()) {
            SkipSpace(t, at);
            if (object) {
                const std::string key = ParseString(t, at);
                SkipSpace(t, at);
                if (t[at++] != ':') ADD_FAILURE() << "JSON: ':' expected after \"" << key << "\"";
                (*v.members_)[key] = ParseValue(t, at);
            } else {
                v.items_->push_back(ParseValue(t, at));
            }
            SkipSpace(t, at);
            const bool comma = at < t.size() && t[at] == ',', end = at < t.size() && t[at] == close;
            if (!comma && !end) ADD_FAILURE() << "JSON: ',' or end expected at " << at;
            if (!comma) return void(at += end);
            ++at;
        }
    }
    static Json ParseValue(const std::string &t, std::size_t &at) {
        SkipSpace(t, at);
        Json v;
        if (at >= t.size()) {
            ADD_FAILURE() << "JSON: value expected at the end";
        } else if (t[at] == '{' || t[at] == '[') {
            v.kind_ = t[at] == '{' ? Kind::kObject : Kind::kArray;
            v.members_ = std::make_shared<std::map<std::string, Json>>();
            v.items_ = std::make_shared<std::vector<Json>>();
            ParseContainer(t, at, v);
        } else if (t[at] == '"') {
            v.kind_ = Kind::kString;
            v.string_ = ParseString(t, at);
        } else if (Literal(t, at, "true") || Literal(t, at, "false")) {
            v.kind_ = Kind::kBool;
            v.number_ = t[at - 1] == 'e' && t[at - 2] == 'u';
        } else if (!Literal(t, at, "null")) {
            char *end = nullptr;
            v.number_ = std::strtod(t.c_str() + at, &end);
            if (end == t.c_str() + at) ADD_FAILURE() << "JSON: value expected at " << at << ": " << t.substr(at, 40);
            v.kind_ = Kind::kNumber;
            at = end - t.c_str();
        }
        return v;
    }

    Kind kind_ = Kind::kNull;
    double number_ = 0.0;
    std::string string_;
    std::shared_ptr<std::map<std::string, Json>> members_;
    std::shared_ptr<std::vector<Json>> items_;
};

}  // namespace kvx::test
