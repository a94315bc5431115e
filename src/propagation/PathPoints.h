#pragma once

#include <vector>

class CElement;
class Coordinates;
class SimObject;

// The points of a drawn path (a wall, a floor outline, a corridor, a way) are the owner's
// "Coordinates" children other than the standard "centrePoint" and "startPoint", in the
// order in which they were added.

std::vector<Coordinates*> GetPathPoints(SimObject& owner);
// Appends a copy of the point as a quick child named "point".
Coordinates* AddPathPoint(SimObject& owner, const Coordinates& point);
// Replaces the owner's path points by those saved in element. False when one fails to load.
bool LoadPathPoints(SimObject& owner, CElement* element);
