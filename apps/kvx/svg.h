// A self-contained SVG picture of a patch of sky around a centre, drawn as
// astronomers draw the sky: north up, east to the left. Positions are
// offsets east and north of the centre in one unit (degrees, arcseconds),
// on an azimuthal equidistant projection for the callers that work from a
// distance and a position angle.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kvx::cli {

class SkyView {
public:
    // title: the heading; unit: the unit of the offsets as printed on the
    // axes ("deg", "arcsec"); half: the half-width of the field, that unit.
    SkyView(std::string title, std::string unit, double half);

    using Points = std::vector<std::pair<double, double>>;  // (east, north)
    // A line through points; dashed for a second family of curves; label
    // written at its last point (may be empty).
    void Line(const Points &points, const std::string &colour, bool dashed, const std::string &label);
    // A filled circle of radius in the offsets' unit (at least a pixel and a half).
    void Disc(double east, double north, double radius, const std::string &colour, const std::string &label);
    // An extra line of text under the title.
    void Note(const std::string &text);

    // The whole document; Save writes it to file (UsageError when it cannot).
    std::string Text() const;
    void Save(const std::string &file) const;

private:
    double X(double east) const;
    double Y(double north) const;
    std::string title_, unit_;
    double half_;
    std::vector<std::string> notes_;
    std::string body_;
};

// The offsets east and north of a point at distance sep and position angle
// pa (same unit as sep; pa in degrees, north through east).
std::pair<double, double> EastNorth(double sep, double pa);

// Text made safe for XML character data and attributes.
std::string XmlEscape(const std::string &s);

}  // namespace kvx::cli
