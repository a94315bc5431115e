#pragma once

#include <vector>

#include "framework/ParamTypes.h"
#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"
#include "propagation/DiffractSource.h"
#include "propagation/TransmitTask.h"

class Interface;
class Medium;
class Ray;

// Turns the rays that ended on a face into the next generation: a reflected ray or fan,
// a transmitted ray or fan, and at edges a fan of diffracted rays, each with its loss.
// Stateless: every operation works only on its arguments, so faces run it on their own
// worker threads without any lock of its own. Children are new rays owned by the lists
// they are appended to; each starts 0.01 m past its point along its direction.
class TransmitManage {
public:
    // The reflected and transmitted children of every ray of the task that has not passed
    // its transmit limit. False when the task holds no rays.
    static bool TransmitRays(TransmitTask& task);

    // One mirror ray about normal.
    static bool Reflect(Ray* ray, std::vector<Ray*>& out, DirQUICK& normal);
    // A fan of rays about the mirror direction, flat or conical as the face's dimensions say.
    static bool ReflectDiffuse(Ray* ray, std::vector<Ray*>& out, eParamValue lossModel,
                               Interface* face, DirQUICK& normal, int volumeId,
                               double permittivityIn, double permittivityOut);
    // Chains the reflected children to ray and charges them the loss of reflectModel.
    static bool AdjustReflectedPower(Ray* ray, std::vector<Ray*>& out, eParamValue reflectModel,
                                     eParamValue lossModel, Interface* face, DirQUICK& normal,
                                     int volumeId, double permittivityIn, double permittivityOut);

    // One ray along direction.
    static bool Transmit(Ray* ray, std::vector<Ray*>& out, CoordQUICK& direction);
    // A cone of rays about direction.
    static bool TransmitDiffuse(Ray* ray, std::vector<Ray*>& out, Interface* face,
                                CoordQUICK& point, CoordQUICK& direction);
    // Chains the transmitted children to ray and charges them the wall's loss.
    static bool AdjustTramnsmittedPower(Ray* ray, std::vector<Ray*>& out, eParamValue lossModel,
                                        Interface* face, DirQUICK& normal, Medium* mediumIn,
                                        int volumeId, double permittivityIn,
                                        double permittivityOut);

    // The diffracted fans of every source of the face; model "off" clears the list.
    static bool TransmitDiffractSources(std::vector<DiffractSource>& sources,
                                        std::vector<Ray*>* out, Interface* face);
    // The fan of one edge event on Keller's cone: n - 1 rays, n = round(sweepAngle / gap).
    static bool Diffract(DiffractSource& source, std::vector<Ray*>& out, Interface* face,
                         double gap, eParamValue model);
    // Chains the diffracted children to the source's ray and applies model's loss.
    static bool AdjustDiffractPower(DiffractSource& source, std::vector<Ray*>& out,
                                    eParamValue model, Interface* face, double angleDependence,
                                    double exponent);

    // Each child gets parent as its previous ray and the parent's power.
    static bool CheckRaysFromPrevious(std::vector<Ray*>& out, Ray* parent);
    // True when the ray cannot leave the denser side: sin(incidence) sqrt(in / out) >= 1.
    static bool TotalInternalReflection(Ray* ray, DirQUICK& normal, double permittivityIn,
                                        double permittivityOut);
    // The angle between the ray and the normal line, in degrees.
    static double GetIncidenceAngle(Ray* ray, DirQUICK& normal);
    // The same angle in radians.
    static double GetGrazingAngle(Ray* ray, DirQUICK& normal);
};
