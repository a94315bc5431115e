#include "control/BatchEvent.h"

#include "geometry/Coordinates.h"

void BatchEvent::AddPoint(double, double, double) {}
void BatchEvent::AddGeoPoint(double, double, double) {}
bool BatchEvent::ToCoordinates(const Point&, Coordinates&) { return false; }
void BatchEvent::GeoToCartesian(double, double, double, double&, double&, double&) {}
