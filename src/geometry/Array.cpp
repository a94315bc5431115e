#include "geometry/Array.h"

#include <climits>
#include <cmath>
#include <numbers>

#include "geometry/Coordinates.h"
#include "geometry/MatrixTemplate.h"
#include "geometry/Rotation.h"
#include "geometry/Transformation.h"
#include "geometry/triLink.h"
#include "logging/Log.h"

namespace {

constexpr const char* TYPE = "Array";
// rayGap and angle are given in degrees; the shapes work in radians.
constexpr double RADIANS_PER_DEGREE = 0.017453292519943295;
constexpr double PI = std::numbers::pi;
constexpr double TWO_PI = 2.0 * std::numbers::pi;

// Truncation towards zero. An undefined size (0 / 0 when a shape has too few rings) gives
// 0, so the shape still yields its NaN positions instead of an undefined conversion.
int Truncate(double value) {
    if (!std::isfinite(value)) return 0;
    if (value >= static_cast<double>(INT_MAX)) return INT_MAX;
    if (value <= static_cast<double>(INT_MIN)) return INT_MIN;
    return static_cast<int>(value);
}

VectorQUICK Quick(Coordinates* position) {
    return VectorQUICK(position->quickGet(0), position->quickGet(1), position->quickGet(2));
}

// A triangle of three positions, with its solid angle seen from the origin when asked.
void addTriRay(int a, int b, int c, const std::vector<Coordinates*>& positions,
               std::vector<triLink*>* links, std::vector<double>* solidAngles) {
    links->push_back(new triLink(a, b, c));
    if (solidAngles == nullptr) return;
    solidAngles->push_back(MatrixTemplate<double>::GetSolidAngle(
        Quick(positions[a]), Quick(positions[b]), Quick(positions[c])));
}

// What the shapes read: the count n and the array's sizes. halfAngle is angle / 2 in
// radians.
struct Shape {
    int n;
    int armCount;
    double angle;
    double halfAngle;
    double size;
};

// Where the shapes write: the positions, and the triangles when links is given.
struct Output {
    std::vector<Coordinates*>& positions;
    std::vector<triLink*>* links;
    std::vector<double>* solidAngles;

    void Add(double x, double y, double z) { positions.push_back(new Coordinates(x, y, z)); }
    void Link(int a, int b, int c) {
        if (links != nullptr) addTriRay(a, b, c, positions, links, solidAngles);
    }
};

// Rings r of a star: the count split over the arms.
int StarRings(const Shape& shape) { return shape.n / shape.armCount; }

// The square grids of both types: m by m positions, linked cell by cell.
int SquareSide(int n) { return Truncate(0.49 + std::sqrt(static_cast<double>(n))); }

void LinkSquare(int m, Output& out) {
    for (int i = 0; i + 1 < m; ++i) {
        for (int j = 0; j + 1 < m; ++j) {
            const int p = j + i * m;
            const int q = j + (i + 1) * m;
            out.Link(p, q, q + 1);
            out.Link(p, p + 1, q + 1);
        }
    }
}

// ---- Type "point": the positions are directions from one point. ----

void PointLine(const Shape& s, Output& out) {
    for (int i = 0; i < s.n; ++i) {
        const double a = s.halfAngle * (2.0 * i / (s.n - 1) - 1.0);
        out.Add(std::sin(a) * s.size / 2.0, 0.0, std::cos(a) * s.size / 2.0);
    }
}

// The head is a zero direction; the arms fan out from the axis, ring by ring.
void PointStar(const Shape& s, Output& out) {
    out.Add(0.0, 0.0, 0.0);
    const int r = StarRings(s);
    const int arms = s.armCount;
    for (int i = 0; i < r; ++i) {
        const double t = s.halfAngle * i / (r - 1);
        for (int j = 0; j < arms; ++j) {
            const double phi = TWO_PI * j / arms;
            out.Add(std::cos(phi) * std::sin(t) * s.size / 2.0,
                    std::sin(phi) * std::sin(t) * s.size / 2.0, std::cos(t) * s.size / 2.0);
        }
    }
    for (int i = 0; i + 1 < r; ++i) {
        for (int j = 0; j < arms; ++j) {
            const int p = j + arms * i + 1;
            const int q = j + arms * (i + 1) + 1;
            const bool last = j == arms - 1;
            const int u = last ? arms * (i + 1) + 1 : arms * (i + 1) + j + 2;
            const int v = last ? arms * i + 1 : arms * i + j + 2;
            out.Link(p, q, u);
            out.Link(p, v, u);
        }
    }
}

// The directions of ring i at polar angle gap * i: as many as fit at the spacing, and one
// where none fits.
int PointRingCount(int i, double gap) {
    return std::max(1, Truncate(TWO_PI * std::sin(gap * i) / gap));
}

// Triangles between a lower ring (from L, kl directions) and the ring above it (from U, ku
// directions), each side advancing by turns so that both go round at the same pace. The
// first ring is the single direction on the axis, joined to every direction above it.
void ZipRings(bool first, int L, int U, int kl, int ku, Output& out) {
    int a = 0;
    int b = 0;
    bool lowerDone = first;
    bool upperDone = false;
    while (!(lowerDone && upperDone)) {
        const int A = a + L;
        const int B = b + U;
        const double pl = first ? 0.0 : (a + 1.0) / kl;
        const double pu = (b + 1.0 + 0.5) / ku;
        if (lowerDone || ((pu <= pl || first) && (!upperDone || lowerDone))) {
            if (!upperDone) {
                if (b < ku - 1) {
                    out.Link(A, B, B + 1);
                } else {
                    upperDone = true;
                    out.Link(lowerDone ? L : A, B, U);
                }
            }
            ++b;
        } else {
            if (a < kl - 1) {
                out.Link(A, B, A + 1);
            } else {
                lowerDone = true;
                out.Link(A, upperDone ? U : B, L);
            }
            ++a;
        }
    }
}

// Rings spaced rayGap apart in polar angle up to half the angle. A positive count sets
// the spacing instead, so that each direction stands for an equal share of the cap; that
// spacing replaces the array's rayGap.
void PointCircleFull(const Shape& s, double& rayGap, Output& out) {
    if (s.n > 0) {
        const double omega = TWO_PI * (1.0 - std::cos(s.halfAngle));
        const double w = omega / s.n;
        rayGap = 2.0 * std::acos(1.0 - w / TWO_PI);
    }
    const double gap = rayGap;
    const int rings = Truncate(s.halfAngle / gap);
    size_t total = 0;
    for (int i = 0; i <= rings; ++i) total += PointRingCount(i, gap);
    out.positions.reserve(total);
    if (out.links != nullptr) out.links->reserve(2 * total);
    if (out.solidAngles != nullptr) out.solidAngles->reserve(2 * total);
    for (int i = 0; i <= rings; ++i) {
        const double theta = gap * i;
        const int m = Truncate(TWO_PI * std::sin(theta) / gap);
        const int entries = std::max(m, 1);
        for (int j = 0; j < entries; ++j) {
            const double phi = m > 0 ? TWO_PI * j / m : 0.0;
            out.Add(std::sin(phi) * std::sin(theta), std::cos(phi) * std::sin(theta),
                    std::cos(theta));
        }
    }
    if (out.links == nullptr) return;
    int lower = 0;
    int upper = 1;
    for (int i = 0; i < rings; ++i) {
        const int ku = PointRingCount(i + 1, gap);
        ZipRings(i == 0, lower, upper, PointRingCount(i, gap), ku, out);
        lower = upper;
        upper += ku;
    }
}

void PointCircleEmpty(const Shape& s, double rayGap, Output& out) {
    const int m = s.n >= 1 ? s.n : Truncate(TWO_PI / rayGap);
    const int entries = std::max(m, 1);
    for (int j = 0; j < entries; ++j) {
        const double phi = m > 0 ? TWO_PI * j / m : 0.0;
        out.Add(std::sin(phi) * std::sin(s.halfAngle), std::cos(phi) * std::sin(s.halfAngle),
                std::cos(s.halfAngle));
    }
}

// An m by m grid of directions over the angle; squareEmpty keeps only its border.
void PointSquare(const Shape& s, int m, bool borderOnly, Output& out) {
    for (int i = 0; i < m; ++i) {
        const double a = (-s.angle / 2.0 + i * s.angle / (m - 1)) * RADIANS_PER_DEGREE;
        for (int j = 0; j < m; ++j) {
            const bool border = i == 0 || j == 0 || i == m - 1 || j == m - 1;
            if (borderOnly && !border) continue;
            const double b = (-s.angle / 2.0 + j * s.angle / (m - 1)) * RADIANS_PER_DEGREE;
            out.Add(std::sin(a), std::sin(b), (std::cos(a) + std::cos(b)) / 2.0);
        }
    }
    if (!borderOnly) LinkSquare(m, out);
}

// ---- Type "plane": the positions are points on the plane z = 0. ----

void PlaneLine(const Shape& s, Output& out) {
    for (int i = 0; i < s.n; ++i) {
        out.Add(s.size * (static_cast<double>(i) / (s.n - 1) - 0.5), 0.0, 0.0);
    }
}

void PlaneStar(const Shape& s, Output& out) {
    out.Add(0.0, 0.0, 0.0);
    const int r = StarRings(s);
    const int arms = s.armCount;
    for (int i = 1; i <= r; ++i) {
        const double rho = s.size * (static_cast<double>(i) / r) * 0.5;
        for (int j = 0; j < arms; ++j) {
            const double phi = TWO_PI * j / arms;
            out.Add(std::sin(phi) * rho, std::cos(phi) * rho, 0.0);
        }
    }
    for (int i = 0; i < r; ++i) {
        for (int j = 0; j < arms; ++j) {
            const bool last = j == arms - 1;
            if (i == 0) {
                out.Link(0, j + 1, last ? j + 2 - arms : j + 2);
                continue;
            }
            const int p = arms * i + j - arms + 1;
            const int q = p + arms;
            out.Link(p, q, last ? arms * i + 1 : q + 1);
            out.Link(p, last ? arms * (i - 1) + 1 : p + 1, last ? arms * i + 1 : q + 1);
        }
    }
}

// Triangles of ring i (its k points from B + 1) with the ring inside it (from P): each
// point meets the inner point at the same fraction of the turn.
void LinkPlaneRing(int i, int k, int B, int P, Output& out) {
    int previous = -1;
    for (int j = 0; j < k; ++j) {
        const int a = j + B + 1;
        const int b = j == k - 1 ? B + 1 : j + B + 2;
        const double t = (j + 0.5) / k;
        const int c = i == 1 ? 0 : Truncate(((B + 1) - P) * t + P);
        out.Link(a, b, c);
        if (previous != -1 && previous != c) out.Link(a, c, previous);
        if (j == k - 1) out.Link(P, b, c);
        previous = c;
    }
}

// Rings of points spaced so that each point covers about an equal share of the disc.
void PlaneCircleFull(const Shape& s, Output& out) {
    const double R = s.size / 2.0;
    const double spacing = std::sqrt(PI * R * R / s.n);
    const int m = Truncate(R / spacing);
    int P = 0;
    int B = 0;
    for (int i = 0; i <= m; ++i) {
        const double rho = i * R / m;
        const int k = Truncate(TWO_PI * rho / spacing);
        const int entries = std::max(k, 1);
        for (int j = 0; j < entries; ++j) {
            const double phi = k > 0 ? TWO_PI * j / k : 0.0;
            out.Add(std::cos(phi) * rho, std::sin(phi) * rho, 0.0);
        }
        if (i != 0) LinkPlaneRing(i, k, B, P, out);
        P = B + 1;
        B += k;
    }
}

void PlaneCircleEmpty(const Shape& s, Output& out) {
    const double R = s.size / 2.0;
    for (double phi = 0.0; phi < TWO_PI; phi += TWO_PI / s.n) {
        out.Add(std::cos(phi) * R, std::sin(phi) * R, 0.0);
    }
}

void PlaneSquareFull(const Shape& s, Output& out) {
    const int m = SquareSide(s.n);
    for (int i = 0; i < m; ++i) {
        for (int j = 0; j < m; ++j) {
            out.Add(s.size * (static_cast<double>(i) / (m - 1) - 0.5),
                    s.size * (static_cast<double>(j) / (m - 1) - 0.5), 0.0);
        }
    }
    LinkSquare(m, out);
}

void PlaneSquareEmpty(const Shape& s, Output& out) {
    const int m = s.n / 4 + 1;
    const double half = s.size / 2.0;
    for (int i = 0; i < m; ++i) {
        const double y = s.size * i / (m - 1) - half;
        out.Add(-half, y, 0.0);
        out.Add(half, y, 0.0);
    }
    for (int i = 1; i < m - 1; ++i) {
        const double x = s.size * i / (m - 1) - half;
        out.Add(x, -half, 0.0);
        out.Add(x, half, 0.0);
    }
}

bool UsesRayGap(eParamValue shape) { return shape == PV_CIRCLEFULL || shape == PV_CIRCLEEMPTY; }

// The directions of a point shape; false for a shape it does not know.
bool GeneratePoint(eParamValue kind, const Shape& shape, double& rayGap, Output& out) {
    switch (kind) {
        case PV_SINGLE:
            out.Add(0.0, 0.0, shape.size);
            return true;
        case PV_LINE:
            PointLine(shape, out);
            return true;
        case PV_STAR:
            PointStar(shape, out);
            return true;
        case PV_CIRCLEFULL:
            PointCircleFull(shape, rayGap, out);
            return true;
        case PV_CIRCLEEMPTY:
            PointCircleEmpty(shape, rayGap, out);
            return true;
        case PV_SQUAREFULL:
            PointSquare(shape, SquareSide(shape.n), false, out);
            return true;
        case PV_SQUAREEMPTY:
            PointSquare(shape, shape.n / 4, true, out);
            return true;
        default:
            return false;
    }
}

// The point shapes that are turned by the array's rotation.
bool PointShapeTurns(eParamValue kind) {
    return kind == PV_SINGLE || kind == PV_LINE || kind == PV_CIRCLEFULL;
}

// The points of a plane shape; false for a shape it does not know.
bool GeneratePlane(eParamValue kind, const Shape& shape, Output& out) {
    switch (kind) {
        case PV_SINGLE:
            out.Add(0.0, 0.0, 0.0);
            return true;
        case PV_LINE:
            PlaneLine(shape, out);
            return true;
        case PV_STAR:
            PlaneStar(shape, out);
            return true;
        case PV_CIRCLEFULL:
            PlaneCircleFull(shape, out);
            return true;
        case PV_CIRCLEEMPTY:
            PlaneCircleEmpty(shape, out);
            return true;
        case PV_SQUAREFULL:
            PlaneSquareFull(shape, out);
            return true;
        case PV_SQUAREEMPTY:
            PlaneSquareEmpty(shape, out);
            return true;
        default:
            return false;
    }
}

}  // namespace

Array::Array() { objTypeStr = TYPE; }

Array::~Array() { ClearPositions(); }

bool Array::checkParams() {
    if (paramsChecked) return false;
    GetParameterValue<eParamValue>(PN_ARRTYP, arrayType);
    GetParameterValue<eParamValue>(PN_ARRSHA, arrayShape);
    GetParameterValue<int>(PN_CNT, count);
    GetParameterValue<int>(PN_ARMS, armCount);
    GetParameterValue<double>(PN_ANG, angle);
    double gapDegrees = -1.0;
    if (GetParameterValue<double>(PN_RAYGAP, gapDegrees)) rayGap = gapDegrees * RADIANS_PER_DEGREE;
    GetParameterValue<double>(PN_SIZ, size);
    GetParameterValue<double>(PN_LMDA, wavelength);
    rotation = dynamic_cast<Rotation*>(GetChildTyped("Rotation"));
    positionsChanged = true;
    paramsChecked = true;
    return true;
}

bool Array::getPositions(std::vector<Coordinates*>& out, bool copy, std::vector<triLink*>* outLinks,
                         std::vector<double>* outAngles, int n) {
    const bool checked = checkParams();
    if (n == -1 && rayGap <= 0.0) n = count;
    if (n <= 0 && rayGap <= 0.0) return false;
    const bool wantLinks = outLinks != nullptr;
    const bool wantAngles = wantLinks && outAngles != nullptr;
    if (checked || positionsChanged || positions.empty() || positionCount != n ||
        (wantLinks && !linksCached) || (wantAngles && !anglesCached)) {
        ClearPositions();
        Generate(n, wantLinks, wantAngles);
    }
    positionsChanged = false;
    positionCount = n;
    HandOut(out, copy, outLinks, wantAngles ? outAngles : nullptr);
    return !positions.empty();
}

void Array::Generate(int n, bool withLinks, bool withAngles) {
    Output out{positions, withLinks ? &links : nullptr, withAngles ? &solidAngles : nullptr};
    linksCached = withLinks;
    anglesCached = withAngles;
    if (n == 1) {
        if (arrayType == PV_PLANE) {
            out.Add(0.0, 0.0, 0.0);
            return;
        }
        out.Add(0.0, 0.0, size);
        Rotate();
        return;
    }
    const bool pointType = arrayType == PV_POINT;
    if (!pointType && arrayType != PV_PLANE) {
        Log::log(1) << "Array::getPositions() - " << objName << " has no arrayType\n";
        return;
    }
    // Only the point circles can be laid out by their spacing alone.
    if (n <= 0 && !(pointType && UsesRayGap(arrayShape))) return;
    const bool starShape = arrayShape == PV_STAR;
    if (starShape && armCount < 1) {
        Log::log(1) << "Array::getPositions() - a star needs a positive armCount, " << objName
                    << " has " << armCount << "\n";
        return;
    }
    const Shape shape{n, armCount, angle, angle / 2.0 * RADIANS_PER_DEGREE, size};
    const bool known = pointType ? GeneratePoint(arrayShape, shape, rayGap, out)
                                 : GeneratePlane(arrayShape, shape, out);
    if (!known) {
        Log::log(1) << "Array::getPositions() - " << objName << " has no known arrayShape\n";
        return;
    }
    if (pointType && PointShapeTurns(arrayShape)) Rotate();
}

void Array::Rotate() {
    if (rotation == nullptr) return;
    rotation->buildTrans();
    Transformation turn(3);
    turn.Add(*rotation);
    for (Coordinates* position : positions) turn.Transform(*position);
}

void Array::HandOut(std::vector<Coordinates*>& out, bool copy, std::vector<triLink*>* outLinks,
                    std::vector<double>* outAngles) const {
    out.reserve(out.size() + positions.size());
    for (Coordinates* position : positions)
        out.push_back(copy ? new Coordinates(*position) : position);
    if (outLinks != nullptr) {
        outLinks->reserve(outLinks->size() + links.size());
        for (triLink* link : links) outLinks->push_back(copy ? new triLink(*link) : link);
    }
    if (outAngles != nullptr)
        outAngles->insert(outAngles->end(), solidAngles.begin(), solidAngles.end());
}

int Array::GetPositionCount() const {
    return positions.empty() ? 1 : static_cast<int>(positions.size());
}

Coordinates* Array::GetPosition(int index) const {
    if (index < 0 || index >= static_cast<int>(positions.size())) return nullptr;
    return positions[index];
}

void Array::ClearPositions() {
    for (Coordinates* position : positions) delete position;
    for (triLink* link : links) delete link;
    positions.clear();
    links.clear();
    solidAngles.clear();
    positionCount = 0;
    linksCached = false;
    anglesCached = false;
}
