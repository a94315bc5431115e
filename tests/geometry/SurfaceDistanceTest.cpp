#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <vector>

#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Function.h"

namespace {

// The frame every surface here is written in: a tilted axis and an exactly perpendicular
// side axis, so that the test can compute local coordinates on its own.
const VectorQUICK CENTRE(0.5, -0.3, 0.2);
const VectorQUICK AXIS(0.2, 0.1, 1.0);
const VectorQUICK SIDE(1.0, 0.0, -0.2);

struct Local {
    double x, y, z;
};

Local ToLocal(const VectorQUICK& p) {
    VectorQUICK w = AXIS, u = SIDE, v(0, 0, 0);
    w.Normalize();
    u.Normalize();
    v.SetCross(w, u);
    const VectorQUICK d(p.data[0] - CENTRE.data[0], p.data[1] - CENTRE.data[1],
                        p.data[2] - CENTRE.data[2]);
    return {u.Dot(d), v.Dot(d), w.Dot(d)};
}

// The surface as an implicit function (zero on it) and the part of it that counts.
struct Implicit {
    std::function<double(const Local&)> value;
    std::function<bool(const Local&)> onBranch = [](const Local&) { return true; };
};

std::unique_ptr<Function> MakeFunction(eParamValue shape, eParamValue system) {
    auto f = std::make_unique<Function>();
    f->Initialize();
    auto* centre = dynamic_cast<Coordinates*>(f->GetChildNamed("centrePoint"));
    centre->SetValues(CENTRE.data[0], CENTRE.data[1], CENTRE.data[2]);
    for (auto [name, v] : {std::pair{"axis", AXIS}, std::pair{"axisA", SIDE}}) {
        auto* child = new Coordinates(v.data[0], v.data[1], v.data[2]);
        child->Initialize();
        f->AddChild(child);
        child->SetName(name);
    }
    f->SetParameterValue(PN_SURFSHAP, shape);
    f->SetParameterValue(PN_COORDSYS, system);
    return f;
}

void SetTerms(Function& f, const std::vector<std::pair<int, double>>& terms) {
    for (size_t i = 0; i < terms.size(); ++i) {
        f.SetParameterValue(FUNCPAR, terms[i].first, PU_NON, PM_NON, static_cast<int>(i));
        f.SetParameterValue(PN_COEFF, terms[i].second, PU_NON, PM_NON, static_cast<int>(i));
    }
}

VectorQUICK At(const VectorQUICK& o, const VectorQUICK& d, double t) {
    return VectorQUICK(o.data[0] + t * d.data[0], o.data[1] + t * d.data[1],
                       o.data[2] + t * d.data[2]);
}

// The first sign change of the implicit function along the ray, by steps of 1e-3 and
// bisection, on the counting part of the surface; -1 when there is none within the limit.
double BruteForceDistance(const Implicit& surface, const VectorQUICK& o, const VectorQUICK& d,
                          double limit) {
    const double step = 1e-3;
    double previousT = 1e-9;
    double previous = surface.value(ToLocal(At(o, d, previousT)));
    for (double t = step; t <= limit; t += step) {
        const double current = surface.value(ToLocal(At(o, d, t)));
        if ((previous < 0.0) != (current < 0.0)) {
            double low = previousT, high = t;
            for (int i = 0; i < 60; ++i) {
                const double mid = 0.5 * (low + high);
                const bool sameAsLow =
                    (surface.value(ToLocal(At(o, d, mid))) < 0.0) == (previous < 0.0);
                (sameAsLow ? low : high) = mid;
            }
            const double root = 0.5 * (low + high);
            if (surface.onBranch(ToLocal(At(o, d, root)))) return root;
        }
        previous = current;
        previousT = t;
    }
    return -1.0;
}

// Random rays against the closed form, aimed near the centre: the same first distance as the
// brute-force search, and a normal along the implicit function's gradient. Rays that graze the
// surface (two crossings closer than the search step) are left out.
void CompareWithBruteForce(Function& f, const Implicit& surface, eParamValue shape,
                           eParamValue system, int seed) {
    ASSERT_TRUE(f.IsUsable());
    ASSERT_TRUE(f.hasQuickDistanceFunc(shape, 3, system));
    std::mt19937 generator(seed);
    std::uniform_real_distribution<double> position(-2.0, 2.0);
    std::uniform_real_distribution<double> near(-1.0, 1.0);
    int hits = 0;
    for (int ray = 0; ray < 60; ++ray) {
        VectorQUICK o(position(generator), position(generator), position(generator));
        // Aimed near the centre, so that most rays meet the surface and some miss it.
        VectorQUICK d(CENTRE.data[0] + near(generator) - o.data[0],
                      CENTRE.data[1] + near(generator) - o.data[1],
                      CENTRE.data[2] + near(generator) - o.data[2]);
        d.Normalize();
        std::vector<double> all;
        f.crossings(o, d, shape, system, 0.0, all);
        bool grazing = false;
        for (size_t i = 1; i < all.size(); ++i) grazing = grazing || all[i] - all[i - 1] < 2e-3;
        if (grazing) continue;

        Coordinates origin(o.data[0], o.data[1], o.data[2]), hit(3);
        Direction dir(d.data[0], d.data[1], d.data[2]), normal(3);
        double distance = -1.0;
        const bool found =
            f.distance(origin, dir, distance, 1e-9, 6.0, &hit, &normal, shape, 3, system);
        const double brute = BruteForceDistance(surface, o, d, 6.0);
        ASSERT_EQ(found, brute >= 0.0) << "ray " << ray << " brute " << brute;
        if (!found) continue;
        ++hits;
        EXPECT_NEAR(distance, brute, 1e-7) << "ray " << ray;
        EXPECT_NEAR(hit.diff(origin), distance, 1e-9);

        // The normal is parallel to the gradient of the implicit function.
        const VectorQUICK p = At(o, d, distance);
        VectorQUICK gradient(0, 0, 0);
        const double h = 1e-6;
        for (int i = 0; i < 3; ++i) {
            VectorQUICK plus = p, minus = p;
            plus.data[i] += h;
            minus.data[i] -= h;
            gradient.data[i] =
                (surface.value(ToLocal(plus)) - surface.value(ToLocal(minus))) / (2 * h);
        }
        gradient.Normalize();
        const VectorQUICK n(normal.Get(0), normal.Get(1), normal.Get(2));
        EXPECT_NEAR(std::abs(n.Dot(gradient)), 1.0, 1e-5) << "ray " << ray;
    }
    EXPECT_GT(hits, 20);
}

}  // namespace

TEST(SurfaceDistance, FlatPlane) {
    auto f = MakeFunction(PV_SURF_FLAT, PV_COORD_CARTESIAN);
    f->SetParameterValue(PN_SURFOFFSET, 0.3);
    CompareWithBruteForce(*f, {[](const Local& l) { return l.z - 0.3; }}, PV_SURF_FLAT,
                          PV_COORD_CARTESIAN, 1);
}

TEST(SurfaceDistance, CartesianPolynomialsOfDegreeThreeAndFour) {
    auto cubic = MakeFunction(PV_SURF_POLYNOMIAL, PV_COORD_CARTESIAN);
    cubic->SetParameterValue(PN_OFFSET, 0.2);
    cubic->SetParameterValue(PN_MULT, 1.5);
    SetTerms(*cubic, {{0, 0.1}, {1, -0.5}, {2, 0.3}, {3, 0.2}});
    auto q3 = [](double x) { return 0.2 + 1.5 * (0.1 - 0.5 * x + 0.3 * x * x + 0.2 * x * x * x); };
    CompareWithBruteForce(*cubic, {[q3](const Local& l) { return l.z - q3(l.x); }},
                          PV_SURF_POLYNOMIAL, PV_COORD_CARTESIAN, 2);

    auto quartic = MakeFunction(PV_SURF_POLYNOMIAL, PV_COORD_CARTESIAN);
    SetTerms(*quartic, {{2, 0.8}, {4, -0.4}, {1, 0.1}});
    auto q4 = [](double x) { return 0.8 * x * x - 0.4 * x * x * x * x + 0.1 * x; };
    CompareWithBruteForce(*quartic, {[q4](const Local& l) { return l.z - q4(l.x); }},
                          PV_SURF_POLYNOMIAL, PV_COORD_CARTESIAN, 3);
}

TEST(SurfaceDistance, PolynomialOfRevolution) {
    auto f = MakeFunction(PV_SURF_POLYNOMIAL, PV_COORD_CYLINDRICAL);
    f->SetParameterValue(PN_OFFSET, 0.1);
    SetTerms(*f, {{2, 0.5}, {4, -0.2}});
    auto q = [](double r) { return 0.1 + 0.5 * r * r - 0.2 * r * r * r * r; };
    CompareWithBruteForce(*f, {[q](const Local& l) { return l.z - q(std::hypot(l.x, l.y)); }},
                          PV_SURF_POLYNOMIAL, PV_COORD_CYLINDRICAL, 4);
    // Odd orders of a surface of revolution and orders above 4 have no closed form.
    SetTerms(*f, {{2, 0.5}, {3, 1.0}});
    f->Recheck();
    EXPECT_FALSE(f->hasQuickDistanceFunc(PV_SURF_POLYNOMIAL, 3, PV_COORD_CYLINDRICAL));
    EXPECT_TRUE(f->hasQuickDistanceFunc(PV_SURF_POLYNOMIAL, 3, PV_COORD_CARTESIAN));
    EXPECT_FALSE(f->hasQuickDistanceFunc(PV_SURF_POLYNOMIAL, 4, PV_COORD_CARTESIAN));
}

TEST(SurfaceDistance, SpheresCapsCylindersAndTori) {
    auto sphere = MakeFunction(PV_SURF_SPHERICAL, PV_COORD_SPHERICAL);
    sphere->SetParameterValue(PN_SPHERRAD, 1.0);
    sphere->SetParameterValue(PN_COUT, 0.4);
    auto ball = [](const Local& l) {
        return l.x * l.x + l.y * l.y + (l.z - 0.4) * (l.z - 0.4) - 1.0;
    };
    CompareWithBruteForce(*sphere, {ball}, PV_SURF_SPHERICAL, PV_COORD_SPHERICAL, 5);

    // 2ndDerivSign 1 keeps the upper cap, -1 the lower one.
    sphere->SetParameterValue(PN_2DVSGN, 1.0);
    sphere->Recheck();
    CompareWithBruteForce(*sphere, {ball, [](const Local& l) { return l.z >= 0.4; }},
                          PV_SURF_SPHERICAL, PV_COORD_SPHERICAL, 6);
    sphere->SetParameterValue(PN_2DVSGN, -1.0);
    sphere->Recheck();
    CompareWithBruteForce(*sphere, {ball, [](const Local& l) { return l.z <= 0.4; }},
                          PV_SURF_SPHERICAL, PV_COORD_SPHERICAL, 7);

    // Cartesian: the circle extruded along v, a cylinder.
    auto cylinder = MakeFunction(PV_SURF_SPHERICAL, PV_COORD_CARTESIAN);
    cylinder->SetParameterValue(PN_SPHERRAD, 0.8);
    cylinder->SetParameterValue(PN_CIN, 0.2);
    CompareWithBruteForce(
        *cylinder, {[](const Local& l) { return (l.x - 0.2) * (l.x - 0.2) + l.z * l.z - 0.64; }},
        PV_SURF_SPHERICAL, PV_COORD_CARTESIAN, 8);

    // A circle off the axis turned about it: a torus, through the quartic solver.
    auto torus = MakeFunction(PV_SURF_SPHERICAL, PV_COORD_CYLINDRICAL);
    torus->SetParameterValue(PN_SPHERRAD, 0.4);
    torus->SetParameterValue(PN_CIN, 1.0);
    torus->SetParameterValue(PN_COUT, 0.1);
    CompareWithBruteForce(*torus, {[](const Local& l) {
        const double r = std::hypot(l.x, l.y) - 1.0;
        return r * r + (l.z - 0.1) * (l.z - 0.1) - 0.16;
    }},
                          PV_SURF_SPHERICAL, PV_COORD_CYLINDRICAL, 9);
}

TEST(SurfaceDistance, Cube) {
    auto f = MakeFunction(PV_SURF_CUBE, PV_COORD_CARTESIAN);
    f->SetParameterValue(PN_SIZ, 1.2);
    f->SetParameterValue(PN_SHAPRATIO1, 1.5);
    f->SetParameterValue(PN_SHAPRATIO2, 0.5);
    CompareWithBruteForce(*f, {[](const Local& l) {
        return std::max({std::abs(l.x) / 0.9, std::abs(l.y) / 0.3, std::abs(l.z) / 0.6}) - 1.0;
    }},
                          PV_SURF_CUBE, PV_COORD_CARTESIAN, 10);

    // Without a size the cube is 0.1 wide; a ray from inside leaves through one face.
    auto small = MakeFunction(PV_SURF_CUBE, PV_COORD_CARTESIAN);
    std::vector<double> ts;
    ASSERT_TRUE(small->crossings(CENTRE, AXIS, PV_SURF_CUBE, PV_COORD_CARTESIAN, 0.0, ts));
    ASSERT_EQ(ts.size(), 2u);
    EXPECT_NEAR(ts[1] * AXIS.GetLength(), 0.05, 1e-12);
    EXPECT_NEAR(ts[0], -ts[1], 1e-12);
}
