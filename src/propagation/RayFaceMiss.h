#pragma once

#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"

class Interface;
class Ray;

// A ray that passes close to a diffracting edge of a mesh element: one heap record per
// element, made by MeshElement::missDistance and owned by whoever collects the list.
struct RayFaceMiss {
    Ray* ray = nullptr;
    // The interface that owns the element; null when its id no longer names one.
    Interface* face = nullptr;
    // From the ray's origin to its closest approach to the edge.
    double distanceAlongRay = -1.0;
    // From that ray point, at right angles, to the edge's line.
    double missDistance = -1.0;
    // The point of the edge nearest the ray.
    CoordQUICK edgePoint{0.0, 0.0, 0.0};
    // In the face's plane, at right angles to the edge, towards the element's centre.
    DirQUICK inward;
    DirQUICK edgeDir;
    DirQUICK faceNormal;

    // The interface with the given object id, or null.
    static Interface* ResolveFace(int ownerId);
};
