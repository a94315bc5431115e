#include "control/BatchEvent.h"

#include <cmath>
#include <cstdlib>
#include <sstream>

#include "geometry/Coordinates.h"

namespace {

constexpr double EARTH_RADIUS = 6371000.0;

std::string NumberText(double value) {
    std::ostringstream text;
    text.precision(17);
    text << value;
    return text.str();
}

// The value under the key as a number: 0 when the key is missing, false when the text is
// not a number.
bool ReadNumber(const BatchEvent::Point& point, const char* key, double& out) {
    auto found = point.find(key);
    out = 0.0;
    if (found == point.end()) return true;
    const char* text = found->second.c_str();
    char* end = nullptr;
    out = std::strtod(text, &end);
    return end != text && *end == '\0' && std::isfinite(out);
}

}  // namespace

void BatchEvent::AddPoint(double x, double y, double z) {
    points.push_back({{"x", NumberText(x)}, {"y", NumberText(y)}, {"z", NumberText(z)}});
}

void BatchEvent::AddGeoPoint(double longitude, double latitude, double height) {
    points.push_back({{"longitude", NumberText(longitude)},
                      {"latitude", NumberText(latitude)},
                      {"height", NumberText(height)}});
}

bool BatchEvent::ToCoordinates(const Point& point, Coordinates& out) {
    double a = 0.0, b = 0.0, c = 0.0;
    if (point.count("x") > 0) {
        if (!ReadNumber(point, "x", a) || !ReadNumber(point, "y", b) || !ReadNumber(point, "z", c))
            return false;
        out.SetValues(a, b, c);
        return true;
    }
    if (point.count("longitude") == 0 || !ReadNumber(point, "longitude", a) ||
        !ReadNumber(point, "latitude", b) || !ReadNumber(point, "height", c)) {
        return false;
    }
    double x = 0.0, y = 0.0, z = 0.0;
    GeoToCartesian(a, b, c, x, y, z);
    out.SetValues(x, y, z);
    return true;
}

void BatchEvent::GeoToCartesian(double longitude, double latitude, double height, double& x,
                                double& y, double& z) {
    const double r = height + EARTH_RADIUS;
    const double lat = latitude * 3.141592653589793 / 180.0;
    const double lon = longitude * 3.141592653589793 / 180.0;
    z = r * std::sin(lat) * (r / r);
    const double across = std::sqrt(r * r - z * z);
    x = across * std::cos(lon) * (r / r);
    y = across * std::sin(lon) * (r / r);
}
