#pragma once

#include <string>
#include <vector>

#include "framework/Component.h"
#include "framework/ParamTypes.h"
#include "geometry/LocalFrame.h"
#include "geometry/MatrixTemplate.h"
#include "geometry/PlaneOutline.h"
#include "geometry/VectorQUICK.h"

class Coordinates;
class Direction;
class DirQUICK;

// The mathematics of a closed-form surface and of an outline.
//
// Everything is written in a local frame (LocalFrame): the origin is the child
// "centrePoint", w the child "axis" (default z), u the child "axisA" made perpendicular to
// w, v = w x u (or the child "axisB" for outlines with unequal ratios). Local coordinates
// are x, y, z along u, v, w.
//
// A surface is the graph of a one-dimensional profile z = q(s):
//   "surfaceFlat"        q(s) = offset
//   "surfacePolynomial"  q(s) = offset + sum_i coefficients[i] multiplier s^orders[i]
//   "surfaceSpherical"   (s - centreIn)^2 + (q - centreOut)^2 = sphericalRadius^2, the
//                        upper branch when 2ndDerivSign is 1, the lower one for another
//                        non-zero sign, both for 0
// where s = x ("cartesian": a surface extruded along v) or s = sqrt(x^2 + y^2)
// ("cylindrical" and "spherical": a surface of revolution about w).
//   "surfaceCube"        the box |x| <= a, |y| <= b, |z| <= c, c = size / 2,
//                        a = c ratio1, b = c ratio2.
//
// An outline (an aperture) gives each point a value, 0 at its centre and 1 on its edge:
//   "circle", "circle3d"  r / R with r the distance from the axis (or, with unequal
//                         ratios, sqrt((x / ratio1)^2 + (y / ratio2)^2)) and R the radius
//   "square", "square3d"  max(|x| / ratio1, |y| / ratio2) / (size / 2)
//   with inner and outer sizes both set, a ring: (r - inner / 2) / ((outer - inner) / 2)
//   "pointsWidth"         the strip from the first to the second outline point, size wide:
//                         max(|a| / (length / 2), |b| / (size / 2)) about its middle
//   the point outline     the polygon of the outline points in the plane of u and v:
//                         1 - d / dc inside, 1 + d / dc outside (PlaneOutline::Value)
//   "single"              the distance from the centre over 0.01, the tolerance of the
//                         same point
// The outline points are the children "outlinePoint", in order.
//
// Parameters are looked up on the function first, then on the SurfaceFunction,
// SurfaceShape or Aperture that holds it, and last on their owner.
class Function : public Component {
public:
    Function();
    ~Function() override;

    // Reads renderDetail and its sampling counts, the shape (apertureShape, else
    // surfaceShapeName) and the shape's numbers and children. Runs once until Recheck; a
    // missing child or size leaves the function unusable and the result false.
    bool checkParams() override;
    // The next use reads the parameters again.
    bool Recheck();
    // Rebuilding from the parameters: a Recheck, then the base behaviour.
    bool QuickSetToChildren(bool force) override;
    // Checks the parameters if needed; true when the function can be evaluated.
    bool IsUsable();

    // The profile q(x). Polynomial: one value. Spherical: none when x is beyond the
    // radius, centreOut at its rim, otherwise the branch chosen by 2ndDerivSign (with 0
    // both are given, and the result is false). Flat: offset.
    bool functionOf(double x, std::vector<double>& values);
    // The surface height over the local point (x, y).
    bool functionOf(double x, double y, std::vector<double>& values);
    // The outline value of a point; true only when it lies strictly between 0 and 1.
    bool functionOf(Coordinates& point, std::vector<double>& values);
    bool functionOf(double x, double y, double z, std::vector<double>& values);
    // The surface points over profile coordinate x (s = x on u), in world coordinates; new
    // objects that the caller owns.
    bool functionOf(double x, std::vector<Coordinates*>& points);
    // dq/dx for each value of the profile at x.
    bool derivativeOf(double x, std::vector<double>& slopes);
    // The surface normal at a point (upwards along w for graphs, outwards for the sphere
    // and the cube), or the axis for an outline.
    bool GetNormal(Coordinates& point, Direction& normal);
    bool GetNormal(const VectorQUICK& point, VectorQUICK& normal);
    bool GetNormal(const VectorQUICK& point, DirQUICK& normal);
    // The first outline value minus 1, or 1 when there is none; negative inside.
    double gap(Coordinates& point);
    // True when a value lies within 0 to 1, both included.
    bool contains(Coordinates& point);

    // The nearest crossing of the ray with the surface of the type given, in closed form:
    // dist is the smallest distance t in [minDist, maxDist] (maxDist < 0: no limit), hit
    // and normal are filled when given. False when there is none, or no closed form for
    // the type (see hasQuickDistanceFunc).
    bool distance(Coordinates& origin, Direction& dir, double& dist, double minDist, double maxDist,
                  Coordinates* hit, Direction* normal, eParamValue surfaceType, int dims,
                  eParamValue coordSystem);
    // Whether distance has a closed form: flat, cube and spherical surfaces always, a
    // polynomial up to degree 4 (cartesian) or of the orders 0, 2 and 4 (revolution); only
    // in 2 or 3 dimensions.
    bool hasQuickDistanceFunc(eParamValue surfaceType, int dims, eParamValue coordSystem);
    // All distances t at which origin + t dir meets the surface shifted by shift along w,
    // ascending; dir needs no unit length. False when there is no closed form.
    bool crossings(const VectorQUICK& origin, const VectorQUICK& dir, eParamValue surfaceType,
                   eParamValue coordSystem, double shift, std::vector<double>& ts);

    // Point sets in world coordinates; new objects that the caller owns. For outlines: the
    // render set samples the inside, the mesh set gives triangles three points at a time,
    // the outline set walks the edge once. For surfaces the same over a grid of the first
    // sampling count squared across the surface's size; the cube and the flat square are
    // given by their corners.
    bool GetRenderPointSet(std::vector<Coordinates*>& points);
    bool GetMeshPointSet(std::vector<Coordinates*>& points);
    bool GetOutlinePointSet(std::vector<Coordinates*>& points);
    // Which edge of a ring an outline follows: 1 the inner one, otherwise the outer one.
    bool SetGuideEdge(int edge);

    eParamValue GetFunctionType();
    eParamValue GetCoordSystem();
    // The sampling count 1, 2 or 3 of renderDetail.
    int GetSamplingCount(int which);
    bool IsOutline() const;
    int GetDimensions() const { return dimensions; }
    double GetSphericalRadius();
    // The centre of a sphere: centrePoint moved by centreOut along the axis.
    VectorQUICK GetSphereCentre();
    // The local frame of the children as they stand now.
    LocalFrame GetFrame();

private:
    // Sample points of a surface over a square grid, size by size; a point is valid where
    // the profile has a value.
    struct Grid {
        explicit Grid(int n) : size(n), points(n * n, VectorQUICK(0, 0, 0)), valid(n * n, false) {}
        int size;
        std::vector<VectorQUICK> points;
        std::vector<bool> valid;
    };

    // The parameter of this function, else of its holders, else of their owner.
    template <typename T>
    bool ReadParameter(eParamName name, T& value);
    template <typename T>
    bool ReadParameterIndex(eParamName name, int index, T& value);
    // The number of parameters of the name where ReadParameter would find them.
    int CountParameter(eParamName name);
    // The first of the two names that is found.
    bool ReadEither(eParamName first, eParamName second, double& value);
    void ResetNumbers();
    bool ReadSamplingCounts();
    bool ReadShapeNumbers();
    bool ReadPolynomial();
    bool RequireChildren(bool withSideAxes);
    // The child of that name when it is a matrix of three or more values, or null.
    MatrixTemplate<double>* FindVector(const std::string& name);
    // The children "outlinePoint" in id order, in world and in local coordinates.
    std::vector<VectorQUICK> OutlinePoints();
    std::vector<VectorQUICK> LocalPoints();
    // The first two local outline points (the origin for a missing one).
    std::vector<VectorQUICK> StripEnds();
    PlaneOutline LocalOutline();

    // The profile q(s) and its slope; the number of branches found.
    int Profile(double s, double values[2]);
    int ProfileSlope(double s, double slopes[2]);
    bool IsRing() const;
    // The half size (or radius) of the inner or outer edge.
    double EdgeHalfSize(bool inner) const;
    double OutlineValue(const VectorQUICK& local);

    // Crossings of a local ray with each kind of surface, appended to ts.
    void FlatCrossings(const VectorQUICK& o, const VectorQUICK& d, std::vector<double>& ts);
    void PolynomialCrossings(const VectorQUICK& o, const VectorQUICK& d, bool revolution,
                             std::vector<double>& ts);
    void SphericalCrossings(const VectorQUICK& o, const VectorQUICK& d, bool revolution,
                            std::vector<double>& ts);
    void CubeCrossings(const VectorQUICK& o, const VectorQUICK& d, std::vector<double>& ts);
    // Keeps the crossings from first on that lie on the branch 2ndDerivSign selects.
    void KeepBranch(const VectorQUICK& o, const VectorQUICK& d, std::vector<double>& ts,
                    size_t first);
    VectorQUICK LocalNormal(const VectorQUICK& local, eParamValue surfaceType,
                            eParamValue coordSystem);

    // Point sets in local coordinates.
    bool ToWorld(const std::vector<VectorQUICK>& local, std::vector<Coordinates*>& points);
    double MeshRingRadius(int k) const;
    VectorQUICK RingPoint(double r, double phi) const;
    void OutlineLocal(std::vector<VectorQUICK>& points, bool inner);
    bool OutlineMesh(std::vector<VectorQUICK>& triangles);
    bool OutlineRender(std::vector<VectorQUICK>& points);
    double HalfExtent() const;
    void SurfaceGrid(std::vector<Grid>& layers);
    std::vector<VectorQUICK> CubeCorners() const;
    bool SurfaceMesh(std::vector<VectorQUICK>& triangles);
    bool SurfaceRender(std::vector<VectorQUICK>& points);
    bool SurfaceOutline(std::vector<VectorQUICK>& points);

    int dimensions = 1;
    eParamValue functionType = PV_EMPTY;
    eParamValue renderDetail = PV_EMPTY;
    int sampleCount1 = 7;
    int sampleCount2 = 3;
    int sampleCount3 = 5;
    double offset = 0.0;
    double multiplier = 1.0;
    int coefficientCount = 0;
    std::vector<int> orders;
    std::vector<double> coefficients;
    double sphericalRadius = -1.0;
    double centreIn = 0.0;
    double centreOut = 0.0;
    double secondDerivSign = 0.0;
    double size = -1.0;
    double sizeInner = -1.0;
    double sizeOuter = -1.0;
    double ratio1 = 1.0;
    double ratio2 = 1.0;
    eParamValue coordSystem = PV_EMPTY;
    int guideEdge = 0;
    bool usable = false;
};
