// BeamQUICK: tracing the rays to interfaces, and the diffraction events that go with it.
#include <cmath>
#include <utility>

#include "logging/Log.h"
#include "propagation/DiffractSource.h"
#include "propagation/FaceHold.h"
#include "propagation/Interface.h"
#include "propagation/RayFaceMiss.h"
#include "radiation/BeamQUICK.h"
#include "radiation/TraceRaysTask.h"

namespace {

constexpr const char* OUTER_LIMIT = "outerLimit";
// The distance step of the edge search: the closeness limit of a miss, in metres, and the
// reach that makes misses along a ray one cluster.
constexpr double STEP = 1.0;
// Events on one face closer than this times the step are one event.
constexpr double DUPLICATE_REACH = 0.1;
constexpr double RADIANS_PER_DEGREE = 3.141592653589793 / 180.0;

// The interfaces of the list that diffract: all but "outerLimit" whose barrierDiffractModel
// is set and not "off". Name and parameter are read under each interface's lock.
std::vector<Interface*> DiffractingFaces(const std::vector<Interface*>& faces) {
    std::vector<Interface*> diffracting;
    for (Interface* face : faces) {
        if (face == nullptr) continue;
        face->lock(true);
        eParamValue model = PV_DIFFRACT_OFF;
        const bool on = !face->TestName(OUTER_LIMIT) &&
                        face->GetParameterValue(PN_BARDIFMDL, model) && model != PV_DIFFRACT_OFF;
        face->unlock();
        if (on) diffracting.push_back(face);
    }
    return diffracting;
}

// The misses of one ray thinned to the earliest cluster along it: a miss joins while it
// lies within a step of the cluster's span, and a miss well before the cluster replaces it
// when, set back along the face's slant by its miss distance, it still lies before it.
// Misses that do not join are deleted at once; the cluster is deleted by Clear.
class MissCluster {
public:
    explicit MissCluster(const DirQUICK& rayDir) : dir(rayDir) {}
    MissCluster(const MissCluster&) = delete;
    MissCluster& operator=(const MissCluster&) = delete;

    void Offer(RayFaceMiss* miss, std::vector<RayFaceMiss*>& kept) {
        const double d = miss->distanceAlongRay;
        bool keep = kept.empty();
        if (!keep && d < lo - STEP) {
            double slant = dir.Angle(miss->faceNormal);
            if (slant > 90.0) slant -= 90.0;
            if (d - std::tan(slant * RADIANS_PER_DEGREE) * miss->missDistance < lo - STEP) {
                Clear(kept);
                keep = true;
            }
        }
        if (!keep && lo - STEP < d && d < hi + STEP) keep = true;
        if (!keep) {
            delete miss;
            return;
        }
        kept.push_back(miss);
        lo = hi = kept.front()->distanceAlongRay;
        for (RayFaceMiss* member : kept) {
            lo = std::min(lo, member->distanceAlongRay);
            hi = std::max(hi, member->distanceAlongRay);
        }
    }

    // The member whose inward direction is nearest the ray's, the first of equals; null
    // for an empty cluster. angle receives that angle in degrees.
    RayFaceMiss* Pick(const std::vector<RayFaceMiss*>& kept, double& angle) const {
        RayFaceMiss* best = nullptr;
        for (RayFaceMiss* member : kept) {
            const double a = dir.Angle(member->inward);
            if (best == nullptr || a < angle) {
                best = member;
                angle = a;
            }
        }
        return best;
    }

    void Clear(std::vector<RayFaceMiss*>& kept) {
        for (RayFaceMiss* member : kept) delete member;
        kept.clear();
        lo = hi = -1.0;
    }

private:
    const DirQUICK& dir;
    double lo = -1.0;
    double hi = -1.0;
};

// Of two events on a face closer than the reach, the one with the larger (or equal) sweep
// goes, and the walk goes on from where it stood: entries before that point had no close
// partner, and an erase never makes one, so this ends as a walk restarted from the first
// entry after each erase would.
void RemoveNearDuplicates(std::vector<DiffractSource>& sources) {
    const double reach = DUPLICATE_REACH * STEP;
    size_t i = 0;
    while (i < sources.size()) {
        bool erased = false;
        for (size_t j = 0; j < sources.size() && !erased; j++) {
            if (j == i || sources[i].edgePoint.diff(sources[j].edgePoint) >= reach) continue;
            const size_t loser = sources[i].sweepAngle >= sources[j].sweepAngle ? i : j;
            sources.erase(sources.begin() + static_cast<long>(loser));
            if (loser < i) i--;
            erased = true;
        }
        if (!erased) i++;
    }
}

}  // namespace

bool BeamQUICK::TransmitToInterfaces(std::vector<Interface*>* list) {
    std::vector<Interface*>& faces = list != nullptr ? *list : interfaces;
    const int count = static_cast<int>(rays.size());
    if (count > 0) {
        TraceRaysTask task(beamId, &rays, 0, count, &faces);
        TraceRaysToFacesTask(&task);
    }

    const std::vector<Interface*> diffracting = DiffractingFaces(faces);
    if (!diffracting.empty()) {
        std::vector<std::pair<Interface*, DiffractSource>> events;
        std::vector<RayFaceMiss*> misses;
        std::vector<RayFaceMiss*> kept;
        for (auto& entry : raysById) {
            Ray* ray = entry.second;
            misses.clear();
            for (Interface* face : diffracting) {
                FaceHold hold(face);
                face->TestRayMiss(ray, misses, STEP);
            }
            MissCluster cluster(ray->dir);
            for (RayFaceMiss* miss : misses) cluster.Offer(miss, kept);
            double angle = 0.0;
            RayFaceMiss* chosen = cluster.Pick(kept, angle);
            if (chosen != nullptr && chosen->face != nullptr) {
                events.emplace_back(chosen->face,
                                    DiffractSource{ray, chosen->edgePoint, chosen->inward,
                                                   chosen->edgeDir, angle, chosen->missDistance});
            }
            cluster.Clear(kept);
        }
        // The events go to their faces, and are merged there, under each face's lock: the
        // beams of other tasks add to the same lists.
        for (Interface* face : diffracting) {
            face->lock(true);
            std::vector<DiffractSource>& sources = face->GetDiffractSources();
            for (auto& event : events) {
                if (event.first == face) sources.push_back(event.second);
            }
            RemoveNearDuplicates(sources);
            face->unlock();
        }
    }
    if (list == nullptr) interfaces.clear();
    CheckRayLimits();
    return count > 0;
}

bool BeamQUICK::TestFaceAndRange(Interface* face, beamRange& range) {
    if (face == nullptr) return false;
    if (!face->HasExactMesh()) return true;
    CoordQUICK faceCentre;
    double faceSize = 0.0;
    if (!face->getCentreAndSize(faceCentre, faceSize)) return true;
    const double distance = faceCentre.diff(range.centre);
    if (distance < faceSize + range.radius) return true;
    const double angle = range.axis.AngleDiff(faceCentre, range.centre);
    if (angle <= range.halfAngle) return true;
    // The sine is taken of the angle in degrees, as this test has always done.
    return std::sin(angle - range.halfAngle) * distance < range.radius;
}
