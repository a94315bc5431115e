#include "geometry/Function.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "geometry/Coordinates.h"
#include "geometry/DirQUICK.h"
#include "geometry/Direction.h"
#include "geometry/MathHack.h"
#include "logging/Log.h"

namespace {

constexpr const char* TYPE = "Function";
constexpr double PI = 3.141592653589793;
// The tolerance of the same point: the reach of a "single" outline.
constexpr double SAME_POINT = 0.01;
// The cube's size when none is given.
constexpr double DEFAULT_CUBE_SIZE = 0.1;
// Direction components below this count as parallel.
constexpr double PARALLEL = 1e-12;

// The classes that hold a function and pass their owner's parameters on to it.
bool IsHolder(const SimObject* object) {
    return object->TestType("SurfaceFunction") || object->TestType("SurfaceShape") ||
           object->TestType("Aperture");
}

VectorQUICK FromMatrix(MatrixTemplate<double>& m) {
    return VectorQUICK(m.Get(0), m.Get(1), m.Get(2));
}

bool IsRevolution(eParamValue coordSystem) { return coordSystem != PV_COORD_CARTESIAN; }

// Polynomials in t, constant term first.
using Polynomial = std::vector<double>;

Polynomial Multiply(const Polynomial& a, const Polynomial& b) {
    Polynomial product(a.size() + b.size() - 1, 0.0);
    for (size_t i = 0; i < a.size(); ++i) {
        for (size_t j = 0; j < b.size(); ++j) product[i + j] += a[i] * b[j];
    }
    return product;
}

Polynomial Power(const Polynomial& base, int exponent) {
    Polynomial result{1.0};
    for (int i = 0; i < exponent; ++i) result = Multiply(result, base);
    return result;
}

void AddScaled(Polynomial& sum, const Polynomial& term, double factor) {
    if (sum.size() < term.size()) sum.resize(term.size(), 0.0);
    for (size_t i = 0; i < term.size(); ++i) sum[i] += factor * term[i];
}

// The real roots of a polynomial of degree up to 4; leading coefficients that are zero
// (by MATHHACK_isZero) lower the degree.
void SolvePolynomial(Polynomial c, std::vector<double>& roots) {
    while (!c.empty() && MATHHACK_isZero(c.back())) c.pop_back();
    double s[4];
    int count = 0;
    switch (c.size()) {
        case 2:
            count = MATHHACK_solveLinear(c.data(), s);
            break;
        case 3:
            count = MATHHACK_solveQuadric(c.data(), s);
            break;
        case 4:
            count = MATHHACK_solveCubic(c.data(), s);
            break;
        case 5:
            count = MATHHACK_solveQuartic(c.data(), s);
            break;
        default:
            break;
    }
    roots.insert(roots.end(), s, s + count);
}

// x(t) = o + d t as a polynomial.
Polynomial Line(double o, double d) { return Polynomial{o, d}; }

// rho^2(t) = (ox + t dx)^2 + (oy + t dy)^2.
Polynomial RadiusSquared(const VectorQUICK& o, const VectorQUICK& d) {
    Polynomial r = Power(Line(o.data[0], d.data[0]), 2);
    AddScaled(r, Power(Line(o.data[1], d.data[1]), 2), 1.0);
    return r;
}

VectorQUICK At(const VectorQUICK& o, const VectorQUICK& d, double t) {
    return VectorQUICK(o.data[0] + t * d.data[0], o.data[1] + t * d.data[1],
                       o.data[2] + t * d.data[2]);
}

// The rows of the render-detail table: the three sampling counts.
struct SamplingRow {
    eParamValue detail;
    int counts[3];
};

constexpr SamplingRow SAMPLING[] = {
    {PV_RES_VERYLOW, {3, 1, 1}}, {PV_RES_LOW, {5, 2, 3}},         {PV_RES_MEDIUM, {7, 3, 5}},
    {PV_RES_HIGH, {15, 9, 11}},  {PV_RES_VERYHIGH, {45, 21, 25}},
};

}  // namespace

Function::Function() { objTypeStr = TYPE; }

Function::~Function() = default;

// ---- parameters ----

template <typename T>
bool Function::ReadParameter(eParamName name, T& value) {
    for (SimObject* at = this; at != nullptr; at = at->GetParent()) {
        auto* component = dynamic_cast<Component*>(at);
        if (component != nullptr && component->GetParameterValue<T>(name, value)) return true;
        if (at != this && !IsHolder(at)) break;
    }
    return false;
}

template <typename T>
bool Function::ReadParameterIndex(eParamName name, int index, T& value) {
    for (SimObject* at = this; at != nullptr; at = at->GetParent()) {
        auto* component = dynamic_cast<Component*>(at);
        if (component != nullptr && component->GetParameterIndexValue<T>(name, index, value)) {
            return true;
        }
        if (at != this && !IsHolder(at)) break;
    }
    return false;
}

bool Function::ReadEither(eParamName first, eParamName second, double& value) {
    return ReadParameter<double>(first, value) || ReadParameter<double>(second, value);
}

void Function::ResetNumbers() {
    offset = 0.0;
    multiplier = 1.0;
    sphericalRadius = -1.0;
    centreIn = 0.0;
    centreOut = 0.0;
    secondDerivSign = 0.0;
    size = -1.0;
    sizeInner = -1.0;
    sizeOuter = -1.0;
    ratio1 = 1.0;
    ratio2 = 1.0;
    coefficientCount = 0;
    coefficients.clear();
    orders.clear();
}

bool Function::checkParams() {
    if (paramsChecked) return usable;
    paramsChecked = true;
    usable = ReadSamplingCounts() && ReadShapeNumbers();
    return usable;
}

bool Function::Recheck() {
    paramsChecked = false;
    return true;
}

bool Function::QuickSetToChildren(bool force) {
    Recheck();
    return Component::QuickSetToChildren(force);
}

bool Function::IsUsable() { return checkParams(); }

bool Function::ReadSamplingCounts() {
    renderDetail = PV_RES_MEDIUM;
    ReadParameter<eParamValue>(PN_RDET, renderDetail);
    for (const SamplingRow& row : SAMPLING) {
        if (row.detail != renderDetail) continue;
        sampleCount1 = row.counts[0];
        sampleCount2 = row.counts[1];
        sampleCount3 = row.counts[2];
        return true;
    }
    Log::log(1) << "Function::checkParams() - " << objName << ": renderDetail " << renderDetail
                << " is not a detail level\n";
    return false;
}

bool Function::ReadShapeNumbers() {
    // The function's own "type" may name any shape; otherwise the holder decides which of
    // the two shape parameters applies.
    const bool underSurface = parent != nullptr && parent->TestType("SurfaceFunction");
    const bool underAperture = parent != nullptr && parent->TestType("Aperture");
    functionType = PV_EMPTY;
    if (!GetParameterValue<eParamValue>(PN_TYP, functionType)) {
        if (!underSurface) ReadParameter<eParamValue>(PN_APSHAP, functionType);
        if (!underAperture && functionType == PV_EMPTY) {
            ReadParameter<eParamValue>(PN_SURFSHAP, functionType);
        }
        if (functionType == PV_EMPTY && OutlinePoints().size() >= 3) {
            functionType = PV_APSHAPE_POINTOUTLINE;
        }
    }

    ResetNumbers();
    ReadEither(PN_APSIZE, PN_SIZ, size);
    ReadParameter<double>(PN_APSIZEIN, sizeInner);
    ReadParameter<double>(PN_APSIZEOUT, sizeOuter);
    ReadParameter<double>(PN_SHAPRATIO1, ratio1);
    ReadParameter<double>(PN_SHAPRATIO2, ratio2);
    ReadEither(PN_SPHERRAD, PN_RAD, sphericalRadius);
    ReadEither(PN_SURFOFFSET, PN_OFFSET, offset);
    ReadEither(PN_MULT, PN_FACEMULT, multiplier);
    ReadParameter<double>(PN_CIN, centreIn);
    ReadParameter<double>(PN_COUT, centreOut);
    ReadParameter<double>(PN_2DVSGN, secondDerivSign);
    coordSystem = PV_COORD_CYLINDRICAL;
    ReadParameter<eParamValue>(PN_COORDSYS, coordSystem);

    const bool hasSize = size > 0.0 || IsRing();
    switch (static_cast<int>(functionType)) {
        case PV_APSHAPE_CIRCLE:
        case PV_APSHAPE_CIRCLE3D:
            dimensions = functionType == PV_APSHAPE_CIRCLE ? 2 : 3;
            if (sphericalRadius <= 0.0 && size > 0.0) sphericalRadius = size / 2.0;
            if (!(sphericalRadius > 0.0) && !IsRing()) break;
            return functionType == PV_APSHAPE_CIRCLE || RequireChildren(ratio1 != ratio2);
        case PV_APSHAPE_SQUARE:
        case PV_APSHAPE_SQUARE3D:
            dimensions = functionType == PV_APSHAPE_SQUARE ? 2 : 3;
            if (!hasSize) break;
            return functionType == PV_APSHAPE_SQUARE || RequireChildren(true);
        case PV_APSHAPE_POINTSWIDTH: {
            dimensions = 2;
            if (!hasSize) break;
            const std::vector<VectorQUICK> ends = StripEnds();
            const double length =
                std::hypot(ends[1].data[0] - ends[0].data[0], ends[1].data[1] - ends[0].data[1]);
            if (OutlinePoints().size() >= 2 && length > 0.0) return true;
            Log::log(1) << "Function::checkParams() - " << objName
                        << ": a strip needs two distinct \"outlinePoint\" children\n";
            return false;
        }
        case PV_APSHAPE_POINTOUTLINE:
            dimensions = 2;
            if (OutlinePoints().size() >= 3) return true;
            Log::log(1) << "Function::checkParams() - " << objName
                        << ": an outline needs three \"outlinePoint\" children\n";
            return false;
        case PV_SINGLE:
            dimensions = 1;
            return true;
        case PV_SURF_FLAT:
        case PV_SURF_APERTUREEXTEND:
            dimensions = 2;
            return true;
        case PV_SURF_POLYNOMIAL:
            dimensions = 1;
            return ReadPolynomial();
        case PV_SURF_SPHERICAL:
            dimensions = 1;
            if (sphericalRadius <= 0.0 && size > 0.0) sphericalRadius = size / 2.0;
            if (sphericalRadius > 0.0) return true;
            break;
        case PV_SURF_CUBE:
            dimensions = 3;
            if (size <= 0.0) size = DEFAULT_CUBE_SIZE;
            return true;
        default:
            Log::log(1) << "Function::checkParams() - " << objName << ": shape " << functionType
                        << " is not known\n";
            return false;
    }
    Log::log(1) << "Function::checkParams() - " << objName << ": shape " << functionType
                << " has no size\n";
    return false;
}

int Function::CountParameter(eParamName name) {
    for (SimObject* at = this; at != nullptr; at = at->GetParent()) {
        auto* component = dynamic_cast<Component*>(at);
        if (component != nullptr && component->GetCount(name) > 0) return component->GetCount(name);
        if (at != this && !IsHolder(at)) break;
    }
    return 0;
}

bool Function::ReadPolynomial() {
    coefficientCount = CountParameter(PN_COEFF);
    ReadParameter<int>(PN_FUNCPARCNT, coefficientCount);
    coefficientCount = std::max(coefficientCount, 0);
    coefficients.assign(coefficientCount, 0.0);
    orders.assign(coefficientCount, 0);
    for (int i = 0; i < coefficientCount; ++i) {
        orders[i] = i;
        ReadParameterIndex<double>(PN_COEFF, i, coefficients[i]);
        ReadParameterIndex<int>(FUNCPAR, i, orders[i]);
        if (orders[i] < 0) {
            Log::log(1) << "Function::checkParams() - " << objName << ": order " << orders[i]
                        << " of term " << i << " is negative\n";
            return false;
        }
    }
    return true;
}

bool Function::RequireChildren(bool withSideAxes) {
    const char* needed[] = {"axis", "axisA", "axisB"};
    const int count = withSideAxes ? 3 : 1;
    for (int i = 0; i < count; ++i) {
        if (FindVector(needed[i]) != nullptr) continue;
        Log::log(1) << "Function::checkParams() - " << objName << ": child \"" << needed[i]
                    << "\" missing\n";
        return false;
    }
    return true;
}

MatrixTemplate<double>* Function::FindVector(const std::string& name) {
    auto* vector = dynamic_cast<MatrixTemplate<double>*>(GetChildNamed(name));
    if (vector == nullptr || vector->GetDim(1) * vector->GetDim(2) < 3) return nullptr;
    return vector;
}

std::vector<VectorQUICK> Function::OutlinePoints() {
    std::vector<VectorQUICK> points;
    for (int i = 0; i < GetChildCount(); ++i) {
        SimObject* child = GetChild(i, true);
        if (child == nullptr || !child->TestName("outlinePoint")) continue;
        auto* point = dynamic_cast<MatrixTemplate<double>*>(child);
        if (point != nullptr && point->GetDim(1) * point->GetDim(2) >= 3) {
            points.push_back(FromMatrix(*point));
        }
    }
    return points;
}

eParamValue Function::GetFunctionType() {
    checkParams();
    return functionType;
}

eParamValue Function::GetCoordSystem() {
    checkParams();
    return coordSystem;
}

int Function::GetSamplingCount(int which) {
    checkParams();
    if (which == 1) return sampleCount1;
    if (which == 2) return sampleCount2;
    if (which == 3) return sampleCount3;
    return -1;
}

double Function::GetSphericalRadius() {
    checkParams();
    return sphericalRadius;
}

VectorQUICK Function::GetSphereCentre() {
    checkParams();
    return GetFrame().PointToWorld(VectorQUICK(0.0, 0.0, centreOut));
}

bool Function::IsOutline() const {
    switch (static_cast<int>(functionType)) {
        case PV_APSHAPE_CIRCLE:
        case PV_APSHAPE_CIRCLE3D:
        case PV_APSHAPE_SQUARE:
        case PV_APSHAPE_SQUARE3D:
        case PV_APSHAPE_POINTSWIDTH:
        case PV_APSHAPE_POINTOUTLINE:
        case PV_SINGLE:
            return true;
        default:
            return false;
    }
}

bool Function::IsRing() const { return sizeInner >= 0.0 && sizeOuter > sizeInner; }

bool Function::SetGuideEdge(int edge) {
    guideEdge = edge;
    return true;
}

LocalFrame Function::GetFrame() {
    LocalFrame frame;
    MatrixTemplate<double>* centre = FindVector("centrePoint");
    MatrixTemplate<double>* along = FindVector("axis");
    MatrixTemplate<double>* side = FindVector("axisA");
    const VectorQUICK origin = centre != nullptr ? FromMatrix(*centre) : VectorQUICK(0, 0, 0);
    const VectorQUICK w = along != nullptr ? FromMatrix(*along) : VectorQUICK(0, 0, 1);
    const VectorQUICK hint = side != nullptr ? FromMatrix(*side) : VectorQUICK(1, 0, 0);
    if (!frame.Set(origin, w, hint)) frame.origin = origin;
    // Unequal ratios measure the second coordinate along axisB itself.
    MatrixTemplate<double>* sideB = FindVector("axisB");
    if (sideB != nullptr && ratio1 != ratio2) {
        VectorQUICK v = FromMatrix(*sideB);
        if (v.GetLength() > 0.0) {
            v *= 1.0 / v.GetLength();
            frame.v = v;
        }
    }
    return frame;
}

// ---- the profile ----

int Function::Profile(double s, double values[2]) {
    switch (static_cast<int>(functionType)) {
        case PV_SURF_FLAT:
            values[0] = offset;
            return 1;
        case PV_SURF_POLYNOMIAL: {
            double sum = offset;
            for (int i = 0; i < coefficientCount; ++i) {
                sum += coefficients[i] * multiplier * std::pow(s, orders[i]);
                Log::log(4) << "Function::functionOf() .. returnValue = " << sum << "\n";
            }
            values[0] = sum;
            return 1;
        }
        case PV_SURF_SPHERICAL: {
            const double d = sphericalRadius * sphericalRadius - (s - centreIn) * (s - centreIn);
            if (d < 0.0) return 0;
            if (d == 0.0) {
                values[0] = centreOut;
                return 1;
            }
            const double root = std::sqrt(d);
            if (secondDerivSign == 0.0) {
                values[0] = centreOut + root;
                values[1] = centreOut - root;
                return 2;
            }
            values[0] = secondDerivSign == 1.0 ? centreOut + root : centreOut - root;
            return 1;
        }
        default:
            return 0;
    }
}

int Function::ProfileSlope(double s, double slopes[2]) {
    if (functionType == PV_SURF_FLAT) {
        slopes[0] = 0.0;
        return 1;
    }
    if (functionType == PV_SURF_POLYNOMIAL) {
        double sum = 0.0;
        for (int i = 0; i < coefficientCount; ++i) {
            if (orders[i] > 0) {
                sum += coefficients[i] * multiplier * orders[i] * std::pow(s, orders[i] - 1);
            }
        }
        slopes[0] = sum;
        return 1;
    }
    double values[2];
    const int count = Profile(s, values);
    for (int i = 0; i < count; ++i) {
        // On a circle, dq/ds = -(s - centreIn) / (q - centreOut): infinite at the rim.
        const double rise = values[i] - centreOut;
        slopes[i] = rise == 0.0 ? std::numeric_limits<double>::infinity() : -(s - centreIn) / rise;
    }
    return count;
}

bool Function::functionOf(double x, std::vector<double>& values) {
    if (!IsUsable()) return false;
    double found[2];
    const int count = Profile(x, found);
    values.insert(values.end(), found, found + count);
    // Two branches of a sphere are both given, but the value is not single.
    return count == 1;
}

bool Function::functionOf(double x, double y, std::vector<double>& values) {
    if (!IsUsable()) return false;
    return functionOf(IsRevolution(coordSystem) ? std::hypot(x, y) : x, values);
}

bool Function::functionOf(double x, std::vector<Coordinates*>& points) {
    std::vector<double> heights;
    functionOf(x, heights);
    if (heights.empty()) return false;
    std::vector<VectorQUICK> local;
    for (double h : heights) local.emplace_back(x, 0.0, h);
    return ToWorld(local, points);
}

bool Function::derivativeOf(double x, std::vector<double>& slopes) {
    if (!IsUsable()) return false;
    double found[2];
    const int count = ProfileSlope(x, found);
    slopes.insert(slopes.end(), found, found + count);
    return count > 0;
}

// ---- outlines ----

double Function::EdgeHalfSize(bool inner) const {
    if (inner && IsRing()) return sizeInner / 2.0;
    if (IsRing()) return sizeOuter / 2.0;
    if (functionType == PV_APSHAPE_CIRCLE || functionType == PV_APSHAPE_CIRCLE3D) {
        return sphericalRadius;
    }
    return size / 2.0;
}

double Function::OutlineValue(const VectorQUICK& local) {
    const double x = local.data[0];
    const double y = local.data[1];
    double r;
    switch (static_cast<int>(functionType)) {
        case PV_APSHAPE_CIRCLE:
        case PV_APSHAPE_CIRCLE3D:
            r = ratio1 == 1.0 && ratio2 == 1.0 ? std::hypot(x, y)
                                               : std::hypot(x / ratio1, y / ratio2);
            break;
        case PV_APSHAPE_SQUARE:
        case PV_APSHAPE_SQUARE3D:
            r = std::max(std::abs(x / ratio1), std::abs(y / ratio2));
            break;
        case PV_APSHAPE_POINTSWIDTH: {
            const std::vector<VectorQUICK> ends = StripEnds();
            const double halfLength = 0.5 * std::hypot(ends[1].data[0] - ends[0].data[0],
                                                       ends[1].data[1] - ends[0].data[1]);
            const double ex = (ends[1].data[0] - ends[0].data[0]) / (2.0 * halfLength);
            const double ey = (ends[1].data[1] - ends[0].data[1]) / (2.0 * halfLength);
            const double mx = x - 0.5 * (ends[0].data[0] + ends[1].data[0]);
            const double my = y - 0.5 * (ends[0].data[1] + ends[1].data[1]);
            return std::max(std::abs(mx * ex + my * ey) / halfLength,
                            std::abs(mx * ey - my * ex) / (size / 2.0));
        }
        case PV_APSHAPE_POINTOUTLINE:
            return LocalOutline().Value(x, y);
        case PV_SINGLE:
            return local.GetLength() / SAME_POINT;
        default:
            return std::numeric_limits<double>::infinity();
    }
    if (IsRing()) return (r - sizeInner / 2.0) / ((sizeOuter - sizeInner) / 2.0);
    return r / EdgeHalfSize(false);
}

bool Function::functionOf(Coordinates& point, std::vector<double>& values) {
    return functionOf(point.Get(0), point.Get(1), point.Get(2), values);
}

bool Function::functionOf(double x, double y, double z, std::vector<double>& values) {
    if (!IsUsable() || !IsOutline()) return false;
    const double value = OutlineValue(GetFrame().PointToLocal(VectorQUICK(x, y, z)));
    values.push_back(value);
    return value > 0.0 && value < 1.0;
}

double Function::gap(Coordinates& point) {
    std::vector<double> values;
    functionOf(point, values);
    return values.empty() ? 1.0 : values[0] - 1.0;
}

bool Function::contains(Coordinates& point) {
    std::vector<double> values;
    functionOf(point, values);
    for (double value : values) {
        if (value >= 0.0 && value <= 1.0) return true;
    }
    return false;
}

std::vector<VectorQUICK> Function::LocalPoints() {
    const LocalFrame frame = GetFrame();
    std::vector<VectorQUICK> local;
    for (const VectorQUICK& p : OutlinePoints()) local.push_back(frame.PointToLocal(p));
    return local;
}

std::vector<VectorQUICK> Function::StripEnds() {
    std::vector<VectorQUICK> ends = LocalPoints();
    ends.resize(2, VectorQUICK(0, 0, 0));
    return ends;
}

PlaneOutline Function::LocalOutline() {
    std::vector<PlaneOutline::Corner> corners;
    for (const VectorQUICK& p : LocalPoints()) corners.push_back({p.data[0], p.data[1]});
    return PlaneOutline(corners);
}

// ---- crossings and distances ----

bool Function::hasQuickDistanceFunc(eParamValue surfaceType, int dims, eParamValue system) {
    if (dims != 2 && dims != 3) return false;
    switch (static_cast<int>(surfaceType)) {
        case PV_SURF_FLAT:
        case PV_SURF_SPHERICAL:
        case PV_SURF_CUBE:
            return true;
        case PV_SURF_POLYNOMIAL:
            checkParams();
            for (int order : orders) {
                const bool even = order % 2 == 0;
                if (order > 4 || (IsRevolution(system) && !even)) return false;
            }
            return true;
        default:
            return false;
    }
}

bool Function::crossings(const VectorQUICK& origin, const VectorQUICK& dir, eParamValue surfaceType,
                         eParamValue system, double shift, std::vector<double>& ts) {
    if (!IsUsable() || !hasQuickDistanceFunc(surfaceType, 3, system)) return false;
    const LocalFrame frame = GetFrame();
    VectorQUICK o = frame.PointToLocal(origin);
    o.data[2] -= shift;
    const VectorQUICK d = frame.DirectionToLocal(dir);
    const size_t first = ts.size();
    switch (static_cast<int>(surfaceType)) {
        case PV_SURF_FLAT:
            FlatCrossings(o, d, ts);
            break;
        case PV_SURF_POLYNOMIAL:
            PolynomialCrossings(o, d, IsRevolution(system), ts);
            break;
        case PV_SURF_SPHERICAL:
            SphericalCrossings(o, d, IsRevolution(system), ts);
            break;
        default:
            CubeCrossings(o, d, ts);
            break;
    }
    std::sort(ts.begin() + first, ts.end());
    return true;
}

// z = offset: t = (offset - oz) / dz.
void Function::FlatCrossings(const VectorQUICK& o, const VectorQUICK& d, std::vector<double>& ts) {
    if (std::abs(d.data[2]) < PARALLEL) return;
    ts.push_back((offset - o.data[2]) / d.data[2]);
}

// q(s(t)) - z(t) = 0 as a polynomial in t. Cartesian: s = ox + t dx, each term expanded
// by powers of that line. Revolution: only even orders, s^2k = rho^2(t)^k with rho^2 a
// quadratic. Degree at most 4, solved in closed form.
void Function::PolynomialCrossings(const VectorQUICK& o, const VectorQUICK& d, bool revolution,
                                   std::vector<double>& ts) {
    Polynomial equation{offset - o.data[2], -d.data[2]};
    const Polynomial base = revolution ? RadiusSquared(o, d) : Line(o.data[0], d.data[0]);
    for (int i = 0; i < coefficientCount; ++i) {
        const int exponent = revolution ? orders[i] / 2 : orders[i];
        AddScaled(equation, Power(base, exponent), coefficients[i] * multiplier);
    }
    SolvePolynomial(equation, ts);
}

// (s - ci)^2 + (z - co)^2 = R^2. Cartesian: a cylinder along v, a quadratic in t.
// Revolution about the axis: a sphere when ci is 0 (quadratic), else the torus
// (rho^2 + Z^2 + ci^2 - R^2)^2 = 4 ci^2 rho^2 with Z = z - co (quartic), of whose roots those
// on the mirrored circle (rho + ci)^2 + Z^2 = R^2 are dropped.
void Function::SphericalCrossings(const VectorQUICK& o, const VectorQUICK& d, bool revolution,
                                  std::vector<double>& ts) {
    const double rr = sphericalRadius * sphericalRadius;
    const Polynomial zPart = Power(Line(o.data[2] - centreOut, d.data[2]), 2);
    const size_t first = ts.size();
    if (!revolution || centreIn == 0.0) {
        Polynomial equation =
            revolution ? RadiusSquared(o, d) : Power(Line(o.data[0] - centreIn, d.data[0]), 2);
        AddScaled(equation, zPart, 1.0);
        equation[0] -= rr;
        SolvePolynomial(equation, ts);
    } else {
        const Polynomial rho2 = RadiusSquared(o, d);
        Polynomial f = rho2;
        AddScaled(f, zPart, 1.0);
        f[0] += centreIn * centreIn - rr;
        Polynomial equation = Power(f, 2);
        AddScaled(equation, rho2, -4.0 * centreIn * centreIn);
        SolvePolynomial(equation, ts);
        const double tolerance = 1e-6 * std::max(rr, 1.0);
        ts.erase(std::remove_if(ts.begin() + first, ts.end(),
                                [&](double t) {
                                    const VectorQUICK p = At(o, d, t);
                                    const double rho = std::hypot(p.data[0], p.data[1]);
                                    const double z = p.data[2] - centreOut;
                                    const double onCircle =
                                        (rho - centreIn) * (rho - centreIn) + z * z - rr;
                                    return std::abs(onCircle) > tolerance;
                                }),
                 ts.end());
    }
    KeepBranch(o, d, ts, first);
}

void Function::KeepBranch(const VectorQUICK& o, const VectorQUICK& d, std::vector<double>& ts,
                          size_t first) {
    if (secondDerivSign == 0.0) return;
    const bool upper = secondDerivSign == 1.0;
    ts.erase(std::remove_if(ts.begin() + first, ts.end(),
                            [&](double t) {
                                const double rise = o.data[2] + t * d.data[2] - centreOut;
                                return upper ? rise < 0.0 : rise > 0.0;
                            }),
             ts.end());
}

// The slab method: the ray is inside the box between the largest entering and the smallest
// leaving t of the three pairs of faces; both ends are crossings.
void Function::CubeCrossings(const VectorQUICK& o, const VectorQUICK& d, std::vector<double>& ts) {
    const double half = size / 2.0;
    const double extents[3] = {half * ratio1, half * ratio2, half};
    double enter = -std::numeric_limits<double>::infinity();
    double leave = std::numeric_limits<double>::infinity();
    for (int i = 0; i < 3; ++i) {
        if (std::abs(d.data[i]) < PARALLEL) {
            if (std::abs(o.data[i]) > extents[i]) return;
            continue;
        }
        const double t1 = (-extents[i] - o.data[i]) / d.data[i];
        const double t2 = (extents[i] - o.data[i]) / d.data[i];
        enter = std::max(enter, std::min(t1, t2));
        leave = std::min(leave, std::max(t1, t2));
    }
    if (enter > leave) return;
    ts.push_back(enter);
    if (leave > enter) ts.push_back(leave);
}

VectorQUICK Function::LocalNormal(const VectorQUICK& p, eParamValue surfaceType,
                                  eParamValue system) {
    const double x = p.data[0];
    const double y = p.data[1];
    const double z = p.data[2];
    const bool revolution = IsRevolution(system);
    const double rho = revolution ? std::hypot(x, y) : std::abs(x);
    // Unit vector of s in the plane: (x, y) / rho, or u for the cartesian profile.
    const double ux = revolution ? (rho > 0.0 ? x / rho : 0.0) : 1.0;
    const double uy = revolution ? (rho > 0.0 ? y / rho : 0.0) : 0.0;
    const double s = revolution ? rho : x;
    VectorQUICK normal(0, 0, 1);
    switch (static_cast<int>(surfaceType)) {
        case PV_SURF_POLYNOMIAL: {
            double slopes[2];
            if (ProfileSlope(s, slopes) == 1)
                normal = VectorQUICK(-slopes[0] * ux, -slopes[0] * uy, 1);
            break;
        }
        case PV_SURF_SPHERICAL: {
            const double radial = s - centreIn;
            normal = VectorQUICK(radial * ux, radial * uy, z - centreOut);
            if (!(normal.GetLength() > 0.0)) normal = VectorQUICK(0, 0, 1);
            break;
        }
        case PV_SURF_CUBE: {
            const double half = size / 2.0;
            const double scaled[3] = {x / (half * ratio1), y / (half * ratio2), z / half};
            int face = 0;
            for (int i = 1; i < 3; ++i) {
                if (std::abs(scaled[i]) > std::abs(scaled[face])) face = i;
            }
            normal = VectorQUICK(0, 0, 0);
            normal.data[face] = scaled[face] < 0.0 ? -1.0 : 1.0;
            break;
        }
        default:
            break;
    }
    normal *= 1.0 / normal.GetLength();
    return normal;
}

bool Function::GetNormal(const VectorQUICK& point, VectorQUICK& normal) {
    if (!IsUsable()) return false;
    const LocalFrame frame = GetFrame();
    const VectorQUICK local = frame.PointToLocal(point);
    const eParamValue type = IsOutline() ? PV_SURF_FLAT : functionType;
    normal = frame.DirectionToWorld(LocalNormal(local, type, coordSystem));
    return true;
}

bool Function::GetNormal(const VectorQUICK& point, DirQUICK& normal) {
    VectorQUICK n(0, 0, 0);
    if (!GetNormal(point, n)) return false;
    normal.SetValues(n.data[0], n.data[1], n.data[2]);
    return true;
}

bool Function::GetNormal(Coordinates& point, Direction& normal) {
    VectorQUICK n(0, 0, 0);
    if (!GetNormal(FromMatrix(point), n)) return false;
    return normal.SetValues(n.data[0], n.data[1], n.data[2]);
}

bool Function::distance(Coordinates& origin, Direction& dir, double& dist, double minDist,
                        double maxDist, Coordinates* hit, Direction* normal,
                        eParamValue surfaceType, int dims, eParamValue system) {
    if (!hasQuickDistanceFunc(surfaceType, dims, system)) return false;
    const VectorQUICK o = FromMatrix(origin);
    const VectorQUICK d = FromMatrix(dir);
    std::vector<double> ts;
    if (!crossings(o, d, surfaceType, system, 0.0, ts)) return false;
    for (double t : ts) {
        if (t < minDist || (maxDist >= 0.0 && t > maxDist)) continue;
        dist = t;
        const VectorQUICK point = At(o, d, t);
        if (hit != nullptr) hit->SetValues(point.data[0], point.data[1], point.data[2]);
        if (normal != nullptr) {
            const LocalFrame frame = GetFrame();
            const VectorQUICK n =
                frame.DirectionToWorld(LocalNormal(frame.PointToLocal(point), surfaceType, system));
            normal->SetValues(n.data[0], n.data[1], n.data[2]);
        }
        return true;
    }
    return false;
}

// ---- point sets ----

bool Function::ToWorld(const std::vector<VectorQUICK>& local, std::vector<Coordinates*>& points) {
    const LocalFrame frame = GetFrame();
    for (const VectorQUICK& p : local) {
        const VectorQUICK world = frame.PointToWorld(p);
        points.push_back(new Coordinates(world.data[0], world.data[1], world.data[2]));
    }
    return !local.empty();
}

// A point at radius r (scaled by the ratios) and angle phi in the outline's plane.
// Ring k of the second sampling count, from the inner edge (the centre for a full circle)
// at 0 to the outer edge at sampleCount2.
double Function::MeshRingRadius(int k) const {
    const double inner = IsRing() ? EdgeHalfSize(true) : 0.0;
    const double outer = EdgeHalfSize(false);
    return inner + (outer - inner) * k / sampleCount2;
}

VectorQUICK Function::RingPoint(double r, double phi) const {
    return VectorQUICK(r * ratio1 * std::cos(phi), r * ratio2 * std::sin(phi), 0.0);
}

void Function::OutlineLocal(std::vector<VectorQUICK>& points, bool inner) {
    switch (static_cast<int>(functionType)) {
        case PV_APSHAPE_CIRCLE:
        case PV_APSHAPE_CIRCLE3D: {
            const int n = 4 * sampleCount1;
            for (int k = 0; k < n; ++k)
                points.push_back(RingPoint(EdgeHalfSize(inner), 2 * PI * k / n));
            break;
        }
        case PV_APSHAPE_SQUARE:
        case PV_APSHAPE_SQUARE3D: {
            const double h = EdgeHalfSize(inner);
            const double corners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
            for (const auto& c : corners)
                points.emplace_back(c[0] * h * ratio1, c[1] * h * ratio2, 0.0);
            break;
        }
        case PV_APSHAPE_POINTSWIDTH: {
            const std::vector<VectorQUICK> ends = StripEnds();
            const double dx = ends[1].data[0] - ends[0].data[0];
            const double dy = ends[1].data[1] - ends[0].data[1];
            const double scale = (size / 2.0) / std::hypot(dx, dy);
            const double nx = -dy * scale;
            const double ny = dx * scale;
            const double z = 0.5 * (ends[0].data[2] + ends[1].data[2]);
            points.emplace_back(ends[0].data[0] - nx, ends[0].data[1] - ny, z);
            points.emplace_back(ends[1].data[0] - nx, ends[1].data[1] - ny, z);
            points.emplace_back(ends[1].data[0] + nx, ends[1].data[1] + ny, z);
            points.emplace_back(ends[0].data[0] + nx, ends[0].data[1] + ny, z);
            break;
        }
        case PV_APSHAPE_POINTOUTLINE: {
            const std::vector<VectorQUICK> local = LocalPoints();
            points.insert(points.end(), local.begin(), local.end());
            break;
        }
        default:
            points.emplace_back(0.0, 0.0, 0.0);
            break;
    }
}

// Triangles over an outline: rings of segments for circles (a fan around the centre in the
// innermost ring unless it is a ring shape), quads between inner and outer corners for
// square rings, two triangles for squares and strips, ear clipping for point outlines.
bool Function::OutlineMesh(std::vector<VectorQUICK>& triangles) {
    switch (static_cast<int>(functionType)) {
        case PV_APSHAPE_CIRCLE:
        case PV_APSHAPE_CIRCLE3D: {
            const int n = 4 * sampleCount1;
            for (int k = 0; k < sampleCount2; ++k) {
                const double r0 = MeshRingRadius(k);
                const double r1 = MeshRingRadius(k + 1);
                for (int j = 0; j < n; ++j) {
                    const double p0 = 2 * PI * j / n;
                    const double p1 = 2 * PI * (j + 1) / n;
                    const VectorQUICK a = RingPoint(r0, p0), b = RingPoint(r0, p1);
                    const VectorQUICK c = RingPoint(r1, p1), d = RingPoint(r1, p0);
                    if (r0 > 0.0) triangles.insert(triangles.end(), {a, b, c});
                    triangles.insert(triangles.end(), {a, c, d});
                }
            }
            return true;
        }
        case PV_APSHAPE_SQUARE:
        case PV_APSHAPE_SQUARE3D:
            if (IsRing()) {
                std::vector<VectorQUICK> inner, outer;
                OutlineLocal(inner, true);
                OutlineLocal(outer, false);
                for (int i = 0; i < 4; ++i) {
                    const int next = (i + 1) % 4;
                    triangles.insert(triangles.end(), {inner[i], outer[i], outer[next]});
                    triangles.insert(triangles.end(), {inner[i], outer[next], inner[next]});
                }
                return true;
            }
            [[fallthrough]];
        case PV_APSHAPE_POINTSWIDTH: {
            std::vector<VectorQUICK> c;
            OutlineLocal(c, false);
            triangles.insert(triangles.end(), {c[0], c[1], c[2], c[0], c[2], c[3]});
            return true;
        }
        case PV_APSHAPE_POINTOUTLINE: {
            const std::vector<VectorQUICK> local = LocalPoints();
            std::vector<std::array<int, 3>> corners;
            const bool whole = LocalOutline().Triangulate(corners);
            for (const auto& t : corners) {
                triangles.insert(triangles.end(), {local[t[0]], local[t[1]], local[t[2]]});
            }
            return whole;
        }
        default:
            return false;
    }
}

// Points over the inside: the centre and the rings of the mesh for circles, a grid of the
// third sampling count plus one on each side for the rectangular shapes (only the points
// inside), the corners and their centre for point outlines.
bool Function::OutlineRender(std::vector<VectorQUICK>& points) {
    switch (static_cast<int>(functionType)) {
        case PV_APSHAPE_CIRCLE:
        case PV_APSHAPE_CIRCLE3D: {
            const int n = 4 * sampleCount1;
            if (!IsRing()) points.emplace_back(0.0, 0.0, 0.0);
            for (int k = IsRing() ? 0 : 1; k <= sampleCount2; ++k) {
                const double r = MeshRingRadius(k);
                for (int j = 0; j < n; ++j) points.push_back(RingPoint(r, 2 * PI * j / n));
            }
            return true;
        }
        case PV_APSHAPE_SQUARE:
        case PV_APSHAPE_SQUARE3D:
        case PV_APSHAPE_POINTSWIDTH: {
            std::vector<VectorQUICK> c;
            OutlineLocal(c, false);
            const int n = sampleCount3 + 1;
            for (int i = 0; i < n; ++i) {
                for (int j = 0; j < n; ++j) {
                    const double a = static_cast<double>(i) / (n - 1);
                    const double b = static_cast<double>(j) / (n - 1);
                    VectorQUICK p(0, 0, 0);
                    for (int k = 0; k < 3; ++k) {
                        const double bottom = c[0].data[k] + a * (c[1].data[k] - c[0].data[k]);
                        const double top = c[3].data[k] + a * (c[2].data[k] - c[3].data[k]);
                        p.data[k] = bottom + b * (top - bottom);
                    }
                    const double value = OutlineValue(p);
                    if (value >= -1e-9 && value <= 1.0 + 1e-9) points.push_back(p);
                }
            }
            return true;
        }
        case PV_APSHAPE_POINTOUTLINE: {
            const std::vector<VectorQUICK> local = LocalPoints();
            points.insert(points.end(), local.begin(), local.end());
            const PlaneOutline::Corner centre = LocalOutline().Centre();
            points.emplace_back(centre.x, centre.y, local.empty() ? 0.0 : local[0].data[2]);
            return true;
        }
        default:
            points.emplace_back(0.0, 0.0, 0.0);
            return true;
    }
}

double Function::HalfExtent() const {
    if (size > 0.0) return size / 2.0;
    if (sphericalRadius > 0.0) return sphericalRadius + std::abs(centreIn);
    return 1.0;
}

// The surface over a grid of the first sampling count on each side across
// [-HalfExtent, HalfExtent]^2, one layer per branch of the profile; cells with a corner off
// the surface (beyond a sphere's rim) are left out of meshes.
void Function::SurfaceGrid(std::vector<Grid>& layers) {
    const int n = std::max(sampleCount1, 2);
    const double h = HalfExtent();
    const bool revolution = IsRevolution(coordSystem);
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            const double x = -h + 2.0 * h * i / (n - 1);
            const double y = -h + 2.0 * h * j / (n - 1);
            double values[2];
            const int count = Profile(revolution ? std::hypot(x, y) : x, values);
            if (layers.size() < static_cast<size_t>(count)) layers.resize(count, Grid(n));
            for (int b = 0; b < count; ++b) {
                layers[b].points[i * n + j] = VectorQUICK(x, y, values[b]);
                layers[b].valid[i * n + j] = true;
            }
        }
    }
}

// The eight corners of the cube, x fastest, then y, then z.
std::vector<VectorQUICK> Function::CubeCorners() const {
    const double half = size / 2.0;
    std::vector<VectorQUICK> corners;
    for (int k = 0; k < 8; ++k) {
        corners.emplace_back((k & 1 ? 1 : -1) * half * ratio1, (k & 2 ? 1 : -1) * half * ratio2,
                             (k & 4 ? 1 : -1) * half);
    }
    return corners;
}

bool Function::SurfaceMesh(std::vector<VectorQUICK>& triangles) {
    if (functionType == PV_SURF_CUBE) {
        const std::vector<VectorQUICK> c = CubeCorners();
        // Two triangles per face, by the corner numbers of CubeCorners.
        const int faces[6][4] = {{0, 1, 3, 2}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                 {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 3, 7, 5}};
        for (const auto& f : faces) {
            triangles.insert(triangles.end(),
                             {c[f[0]], c[f[1]], c[f[2]], c[f[0]], c[f[2]], c[f[3]]});
        }
        return true;
    }
    std::vector<Grid> layers;
    SurfaceGrid(layers);
    for (const Grid& grid : layers) {
        const int n = grid.size;
        for (int i = 0; i + 1 < n; ++i) {
            for (int j = 0; j + 1 < n; ++j) {
                const int a = i * n + j, b = (i + 1) * n + j, c = (i + 1) * n + j + 1,
                          d = i * n + j + 1;
                if (!grid.valid[a] || !grid.valid[b] || !grid.valid[c] || !grid.valid[d]) continue;
                triangles.insert(triangles.end(), {grid.points[a], grid.points[b], grid.points[c],
                                                   grid.points[a], grid.points[c], grid.points[d]});
            }
        }
    }
    return !triangles.empty();
}

bool Function::SurfaceRender(std::vector<VectorQUICK>& points) {
    if (functionType == PV_SURF_CUBE) {
        const std::vector<VectorQUICK> c = CubeCorners();
        points.insert(points.end(), c.begin(), c.end());
        return true;
    }
    std::vector<Grid> layers;
    SurfaceGrid(layers);
    for (const Grid& grid : layers) {
        for (size_t k = 0; k < grid.points.size(); ++k) {
            if (grid.valid[k]) points.push_back(grid.points[k]);
        }
    }
    return !points.empty();
}

// The border of the grid once round, or the cube's corners.
bool Function::SurfaceOutline(std::vector<VectorQUICK>& points) {
    if (functionType == PV_SURF_CUBE) return SurfaceRender(points);
    std::vector<Grid> layers;
    SurfaceGrid(layers);
    for (const Grid& grid : layers) {
        const int n = grid.size;
        std::vector<int> border;
        for (int j = 0; j < n - 1; ++j) border.push_back(j);                // i = 0
        for (int i = 0; i < n - 1; ++i) border.push_back(i * n + n - 1);    // j = n-1
        for (int j = n - 1; j > 0; --j) border.push_back((n - 1) * n + j);  // i = n-1
        for (int i = n - 1; i > 0; --i) border.push_back(i * n);            // j = 0
        for (int k : border) {
            if (grid.valid[k]) points.push_back(grid.points[k]);
        }
    }
    return !points.empty();
}

bool Function::GetRenderPointSet(std::vector<Coordinates*>& points) {
    if (!IsUsable()) return false;
    std::vector<VectorQUICK> local;
    const bool made = IsOutline() ? OutlineRender(local) : SurfaceRender(local);
    return made && ToWorld(local, points);
}

bool Function::GetMeshPointSet(std::vector<Coordinates*>& points) {
    if (!IsUsable()) return false;
    std::vector<VectorQUICK> local;
    const bool made = IsOutline() ? OutlineMesh(local) : SurfaceMesh(local);
    ToWorld(local, points);
    return made && !local.empty();
}

bool Function::GetOutlinePointSet(std::vector<Coordinates*>& points) {
    if (!IsUsable()) return false;
    std::vector<VectorQUICK> local;
    if (IsOutline()) {
        OutlineLocal(local, guideEdge == 1);
    } else {
        SurfaceOutline(local);
    }
    return ToWorld(local, points);
}
