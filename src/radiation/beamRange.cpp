#include "radiation/beamRange.h"

#include <cmath>

#include "radiation/Ray.h"

void beamRange::addRay(Ray* ray) {
    if (ray == nullptr) return;
    if (rays.empty()) {
        axis.Copy(ray->dir);
        halfAngle = 0.0;
        centre.Copy(ray->origin);
        radius = 0.0;
        rays.push_back(ray);
        return;
    }
    const double angle = axis.Angle(ray->dir);
    if (angle > halfAngle) {
        // The tilt is half the excess; its tangent is taken of the angle in degrees.
        const double tilt = (angle - halfAngle) / 2.0;
        DirQUICK side(ray->dir.data[0], ray->dir.data[1], ray->dir.data[2]);
        const double along = ray->dir.Dot(axis);
        side.SetValues(side.data[0] + along * axis.data[0], side.data[1] + along * axis.data[1],
                       side.data[2] + along * axis.data[2]);
        const double step = std::tan(tilt);
        axis.SetValues(axis.data[0] + step * side.data[0], axis.data[1] + step * side.data[1],
                       axis.data[2] + step * side.data[2]);
        halfAngle += tilt;
    }
    const double distance = centre.diff(ray->origin);
    if (distance > radius) {
        const double share = 1.0 - radius / distance;
        centre.SetValues(centre.data[0] + share * (ray->origin.data[0] - centre.data[0]),
                         centre.data[1] + share * (ray->origin.data[1] - centre.data[1]),
                         centre.data[2] + share * (ray->origin.data[2] - centre.data[2]));
        radius += (distance - radius) / 2.0;
    }
    rays.push_back(ray);
}
