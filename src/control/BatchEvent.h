#pragma once

#include <map>
#include <string>
#include <vector>

class Coordinates;

// A batch of input that builds one thing in a scene: an event number naming what to build
// and a list of points, each a map from a key to a number written as text. A point is
// cartesian ("x", "y", "z") or geographic ("longitude", "latitude", "height"; degrees and
// metres). OpticElement::ReceiveBatchEvent reads it.
class BatchEvent {
public:
    using Point = std::map<std::string, std::string>;

    // What an event builds.
    enum eEvent : int {
        eventWall = 0,
        eventBuilding = 1,
        eventSource = 3,
        eventTestPoint = 4,
    };

    explicit BatchEvent(int event = -1) : event(event) {}

    int GetEvent() const { return event; }
    void SetEvent(int value) { event = value; }
    const std::vector<Point>& GetPoints() const { return points; }
    void AddPoint(const Point& point) { points.push_back(point); }
    // Appends a cartesian point.
    void AddPoint(double x, double y, double z);
    // Appends a geographic point.
    void AddGeoPoint(double longitude, double latitude, double height);

    // The point as cartesian coordinates: "x", "y", "z" as they stand (a missing key reads
    // 0), or a geographic point turned into the earth-centred frame. False when the point
    // has neither "x" nor "longitude", or a value is not a number.
    static bool ToCoordinates(const Point& point, Coordinates& out);
    // Degrees of longitude and latitude and a height above the earth's surface in metres to
    // the earth-centred cartesian frame, the earth a sphere of radius 6371000 metres.
    static void GeoToCartesian(double longitude, double latitude, double height, double& x,
                               double& y, double& z);

private:
    int event;
    std::vector<Point> points;
};
