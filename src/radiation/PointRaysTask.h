#pragma once

#include <vector>

#include "framework/Lockable.h"
#include "framework/NexoBase.h"
#include "geometry/CoordQUICK.h"

class Ray;
class TestPoint;

// The rays of one beam to be tested against one test point: the point's position, the point
// itself, its catch size (the diameter of the capsule) and the rays. The rays are not owned.
// Its lock lets several threads share a list of tasks: the first thread that takes a task's
// lock runs it.
class PointRaysTask : public NexoBase::ContentBase, public Lockable {
public:
    PointRaysTask(const CoordQUICK& point, TestPoint* testPoint, double catchSize)
        : point(point), testPoint(testPoint), catchSize(catchSize) {}
    ~PointRaysTask() override = default;

    CoordQUICK point;
    TestPoint* testPoint = nullptr;
    double catchSize = 1.0;
    std::vector<Ray*> rays;
    // Set once a thread has run the task.
    bool done = false;
};
