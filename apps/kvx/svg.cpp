// SkyView: the SVG pictures of kvx comet --tail and kvx moons.
#include "svg.h"

#include <cmath>
#include <cstdio>
#include <fstream>

#include "cli.h"

namespace kvx::cli {

namespace {

constexpr double kSize = 640.0;    // pixels, square field
constexpr double kMargin = 70.0;   // room for the title, axes and labels
constexpr double kPlot = kSize - 2.0 * kMargin;

std::string Num(double v) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.2f", v);
    return buf;
}

// A round step for ticks and the scale bar: 1, 2 or 5 times a power of ten
// near a fifth of the half-width.
double NiceStep(double half) {
    const double raw = half / 2.5;
    const double p = std::pow(10.0, std::floor(std::log10(raw)));
    for (double m : {1.0, 2.0, 5.0})
        if (m * p >= raw) return m * p;
    return 10.0 * p;
}

std::string Label(double v) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%g", std::fabs(v) < 1e-12 ? 0.0 : v);
    return buf;
}

}  // namespace

std::string XmlEscape(const std::string &s) {
    std::string out;
    for (char c : s) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        default: out += c;
        }
    }
    return out;
}

std::pair<double, double> EastNorth(double sep, double pa) {
    const double a = pa * 3.141592653589793 / 180.0;
    return {sep * std::sin(a), sep * std::cos(a)};
}

SkyView::SkyView(std::string title, std::string unit, double half)
    : title_(std::move(title)), unit_(std::move(unit)), half_(half > 0.0 && std::isfinite(half) ? half : 1.0) {}

// East to the left: x grows westward.
double SkyView::X(double east) const { return kSize / 2.0 - east / half_ * (kPlot / 2.0); }
double SkyView::Y(double north) const { return kSize / 2.0 - north / half_ * (kPlot / 2.0); }

void SkyView::Line(const Points &points, const std::string &colour, bool dashed, const std::string &label) {
    if (points.empty()) return;
    std::string d;
    for (const auto &p : points) d += (d.empty() ? "" : " ") + Num(X(p.first)) + "," + Num(Y(p.second));
    body_ += "  <polyline points=\"" + d + "\" fill=\"none\" stroke=\"" + XmlEscape(colour) +
             "\" stroke-width=\"1.5\"" + (dashed ? " stroke-dasharray=\"5,3\"" : "") + "/>\n";
    if (!label.empty())
        body_ += "  <text x=\"" + Num(X(points.back().first) + 3.0) + "\" y=\"" + Num(Y(points.back().second) - 3.0) +
                 "\" fill=\"" + XmlEscape(colour) + "\" font-size=\"11\">" + XmlEscape(label) + "</text>\n";
}

void SkyView::Disc(double east, double north, double radius, const std::string &colour, const std::string &label) {
    const double r = std::fmax(1.5, radius / half_ * (kPlot / 2.0));
    body_ += "  <circle cx=\"" + Num(X(east)) + "\" cy=\"" + Num(Y(north)) + "\" r=\"" + Num(r) + "\" fill=\"" +
             XmlEscape(colour) + "\"/>\n";
    if (!label.empty())
        body_ += "  <text x=\"" + Num(X(east) + r + 2.0) + "\" y=\"" + Num(Y(north) - r - 2.0) +
                 "\" font-size=\"12\" fill=\"black\">" + XmlEscape(label) + "</text>\n";
}

void SkyView::Note(const std::string &text) { notes_.push_back(text); }

std::string SkyView::Text() const {
    const std::string s = Num(kSize);
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
                      s + "\" height=\"" + s + "\" viewBox=\"0 0 " + s + " " + s +
                      "\" font-family=\"sans-serif\">\n  <title>" + XmlEscape(title_) +
                      "</title>\n  <rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
    out += "  <text x=\"" + Num(kMargin) + "\" y=\"24\" font-size=\"15\">" + XmlEscape(title_) + "</text>\n";
    for (size_t k = 0; k < notes_.size(); ++k)
        out += "  <text x=\"" + Num(kMargin) + "\" y=\"" + Num(40.0 + 14.0 * k) + "\" font-size=\"11\">" +
               XmlEscape(notes_[k]) + "</text>\n";
    // Frame, grid and tick labels: offsets east (leftward) and north.
    const double lo = kMargin, hi = kSize - kMargin, step = NiceStep(half_);
    out += "  <g stroke=\"#bbb\" stroke-width=\"0.5\">\n";
    for (double v = -std::floor(half_ / step) * step; v <= half_ * (1.0 + 1e-9); v += step) {
        out += "    <line x1=\"" + Num(X(v)) + "\" y1=\"" + Num(lo) + "\" x2=\"" + Num(X(v)) + "\" y2=\"" + Num(hi) + "\"/>\n";
        out += "    <line x1=\"" + Num(lo) + "\" y1=\"" + Num(Y(v)) + "\" x2=\"" + Num(hi) + "\" y2=\"" + Num(Y(v)) + "\"/>\n";
    }
    out += "  </g>\n  <g font-size=\"10\" fill=\"#555\">\n";
    for (double v = -std::floor(half_ / step) * step; v <= half_ * (1.0 + 1e-9); v += step) {
        out += "    <text x=\"" + Num(X(v)) + "\" y=\"" + Num(hi + 14.0) + "\" text-anchor=\"middle\">" + Label(v) + "</text>\n";
        out += "    <text x=\"" + Num(lo - 4.0) + "\" y=\"" + Num(Y(v) + 3.0) + "\" text-anchor=\"end\">" + Label(v) + "</text>\n";
    }
    out += "  </g>\n  <rect x=\"" + Num(lo) + "\" y=\"" + Num(lo) + "\" width=\"" + Num(kPlot) + "\" height=\"" +
           Num(kPlot) + "\" fill=\"none\" stroke=\"black\"/>\n";
    out += "  <text x=\"" + Num(kSize / 2.0) + "\" y=\"" + Num(hi + 30.0) + "\" font-size=\"11\" text-anchor=\"middle\">" +
           "offset east (" + XmlEscape(unit_) + "), east to the left</text>\n";
    out += "  <text x=\"16\" y=\"" + Num(kSize / 2.0) + "\" font-size=\"11\" text-anchor=\"middle\" transform=\"rotate(-90 16 " +
           Num(kSize / 2.0) + ")\">offset north (" + XmlEscape(unit_) + ")</text>\n";
    // Compass and scale bar in the lower-left corner of the field.
    const double cx = lo + 50.0, cy = hi - 40.0;
    out += "  <g stroke=\"black\" stroke-width=\"1.2\">\n    <line x1=\"" + Num(cx) + "\" y1=\"" + Num(cy) + "\" x2=\"" +
           Num(cx) + "\" y2=\"" + Num(cy - 25.0) + "\"/>\n    <line x1=\"" + Num(cx) + "\" y1=\"" + Num(cy) + "\" x2=\"" +
           Num(cx - 25.0) + "\" y2=\"" + Num(cy) + "\"/>\n  </g>\n";
    out += "  <text x=\"" + Num(cx - 4.0) + "\" y=\"" + Num(cy - 28.0) + "\" font-size=\"11\">N</text>\n";
    out += "  <text x=\"" + Num(cx - 36.0) + "\" y=\"" + Num(cy + 4.0) + "\" font-size=\"11\">E</text>\n";
    const double bar = step / half_ * (kPlot / 2.0);
    out += "  <line x1=\"" + Num(cx) + "\" y1=\"" + Num(hi - 12.0) + "\" x2=\"" + Num(cx + bar) + "\" y2=\"" +
           Num(hi - 12.0) + "\" stroke=\"black\" stroke-width=\"2\"/>\n";
    out += "  <text x=\"" + Num(cx + bar + 4.0) + "\" y=\"" + Num(hi - 8.0) + "\" font-size=\"11\">" + Label(step) + " " +
           XmlEscape(unit_) + "</text>\n";
    return out + body_ + "</svg>\n";
}

void SkyView::Save(const std::string &file) const {
    std::ofstream f(file, std::ios::binary);
    if (!f) throw UsageError{"cannot write " + file};
    f << Text();
    if (!f) throw UsageError{"cannot write " + file};
}

}  // namespace kvx::cli
