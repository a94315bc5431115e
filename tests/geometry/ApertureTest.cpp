#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "geometry/Aperture.h"
#include "geometry/Coordinates.h"
#include "geometry/Direction.h"
#include "geometry/Function.h"
#include "geometry/SurfaceFunction.h"
#include "geometry/SurfaceShape.h"
#include "support/LogCapture.h"
#include "support/SampleNode.h"

namespace {

// Adds a Coordinates child of that name at (x, y, z).
void AddVector(SimObject& owner, const char* name, double x, double y, double z) {
    auto* child = new Coordinates(x, y, z);
    child->Initialize();
    owner.AddChild(child);
    child->SetName(name);
}

std::unique_ptr<Function> MakeOutline(eParamValue shape) {
    auto f = std::make_unique<Function>();
    f->Initialize();
    f->SetParameterValue(PN_APSHAP, shape);
    return f;
}

double Value(Function& f, double x, double y, double z) {
    std::vector<double> values;
    f.functionOf(x, y, z, values);
    return values.empty() ? -99.0 : values[0];
}

// Deletes the points handed out by a point set when the test is done.
struct PointSet {
    PointSet() = default;
    PointSet(const PointSet&) = delete;
    PointSet& operator=(const PointSet&) = delete;
    ~PointSet() {
        for (Coordinates* p : points) delete p;
    }
    std::vector<Coordinates*> points;
};

double TriangleArea(Coordinates& a, Coordinates& b, Coordinates& c) {
    const VectorQUICK pa(a.Get(0), a.Get(1), a.Get(2));
    VectorQUICK n(0, 0, 0);
    n.SetCross(pa, VectorQUICK(b.Get(0), b.Get(1), b.Get(2)),
               VectorQUICK(c.Get(0), c.Get(1), c.Get(2)));
    return 0.5 * n.GetLength();
}

double MeshArea(const std::vector<Coordinates*>& mesh) {
    double area = 0.0;
    for (size_t i = 0; i + 2 < mesh.size(); i += 3) {
        area += TriangleArea(*mesh[i], *mesh[i + 1], *mesh[i + 2]);
    }
    return area;
}

}  // namespace

TEST(Function, OutlineValuesFromCentreToEdge) {
    // A circle about the z axis through (1, 1, 0): the height along the axis plays no part.
    auto circle = MakeOutline(PV_APSHAPE_CIRCLE3D);
    AddVector(*circle, "axis", 0.0, 0.0, 2.0);
    dynamic_cast<Coordinates*>(circle->GetChildNamed("centrePoint"))->SetValues(1.0, 1.0, 0.0);
    circle->SetParameterValue(PN_SPHERRAD, 0.5);
    EXPECT_DOUBLE_EQ(Value(*circle, 1.0, 1.0, 3.0), 0.0);
    EXPECT_DOUBLE_EQ(Value(*circle, 1.25, 1.0, -7.0), 0.5);
    Coordinates inside(1.2, 1.2, 0.0), edge(1.5, 1.0, 0.0), outside(2.0, 1.0, 0.0);
    EXPECT_TRUE(circle->contains(inside));
    EXPECT_TRUE(circle->contains(edge));  // 1 itself is contained
    std::vector<double> values;
    EXPECT_FALSE(circle->functionOf(edge, values));  // but not strictly inside
    EXPECT_FALSE(circle->contains(outside));
    EXPECT_DOUBLE_EQ(circle->gap(outside), 1.0);
    EXPECT_LT(circle->gap(inside), 0.0);

    // Inner and outer sizes make a ring: 0 on the inner edge, 1 on the outer one.
    circle->SetParameterValue(PN_APSIZEIN, 0.4);
    circle->SetParameterValue(PN_APSIZEOUT, 1.0);
    circle->Recheck();
    EXPECT_NEAR(Value(*circle, 1.2, 1.0, 0.0), 0.0, 1e-12);
    EXPECT_DOUBLE_EQ(Value(*circle, 1.35, 1.0, 0.0), 0.5);
    Coordinates hole(1.1, 1.0, 0.0);
    EXPECT_FALSE(circle->contains(hole));

    // Unequal ratios measure along axisA and axisB, each divided by its ratio; they need
    // both children.
    auto ellipse = MakeOutline(PV_APSHAPE_CIRCLE3D);
    AddVector(*ellipse, "axis", 0.0, 0.0, 1.0);
    ellipse->SetParameterValue(PN_APSIZE, 2.0);
    ellipse->SetParameterValue(PN_SHAPRATIO1, 2.0);
    LogCapture log;
    EXPECT_FALSE(ellipse->checkParams());
    EXPECT_TRUE(log.Contains("child \"axisA\" missing"));
    AddVector(*ellipse, "axisA", 1.0, 0.0, 0.0);
    AddVector(*ellipse, "axisB", 0.0, 1.0, 0.0);
    ellipse->Recheck();
    EXPECT_DOUBLE_EQ(Value(*ellipse, 2.0, 0.0, 0.0), 1.0);
    EXPECT_DOUBLE_EQ(Value(*ellipse, 0.0, 1.0, 0.0), 1.0);

    auto noAxis = MakeOutline(PV_APSHAPE_CIRCLE3D);
    noAxis->SetParameterValue(PN_SPHERRAD, 1.0);
    EXPECT_FALSE(noAxis->IsUsable());
    auto noSize = MakeOutline(PV_APSHAPE_SQUARE);
    EXPECT_FALSE(noSize->IsUsable());
    EXPECT_FALSE(noSize->contains(inside));
}

TEST(Function, SquaresStripsPolygonsAndSinglePoints) {
    auto square = MakeOutline(PV_APSHAPE_SQUARE);
    square->SetParameterValue(PN_APSIZE, 2.0);
    square->SetParameterValue(PN_SHAPRATIO2, 3.0);
    EXPECT_DOUBLE_EQ(Value(*square, 0.5, 0.0, 0.0), 0.5);
    EXPECT_DOUBLE_EQ(Value(*square, 0.5, 2.4, 0.0), 0.8);
    EXPECT_DOUBLE_EQ(Value(*square, -1.0, -3.0, 0.0), 1.0);

    // A strip from (0, 0) to (4, 0), 2 wide.
    auto strip = MakeOutline(PV_APSHAPE_POINTSWIDTH);
    strip->SetParameterValue(PN_APSIZE, 2.0);
    AddVector(*strip, "outlinePoint", 0.0, 0.0, 0.0);
    AddVector(*strip, "outlinePoint", 4.0, 0.0, 0.0);
    EXPECT_DOUBLE_EQ(Value(*strip, 2.0, 0.0, 0.0), 0.0);
    EXPECT_DOUBLE_EQ(Value(*strip, 3.0, 0.5, 0.0), 0.5);
    EXPECT_DOUBLE_EQ(Value(*strip, 2.0, 1.0, 0.0), 1.0);
    EXPECT_GT(Value(*strip, 4.5, 0.0, 0.0), 1.0);
    auto degenerate = MakeOutline(PV_APSHAPE_POINTSWIDTH);
    degenerate->SetParameterValue(PN_APSIZE, 2.0);
    AddVector(*degenerate, "outlinePoint", 1.0, 1.0, 0.0);
    AddVector(*degenerate, "outlinePoint", 1.0, 1.0, 5.0);  // the same point seen along z
    EXPECT_FALSE(degenerate->IsUsable());

    // An L-shaped floor, not convex: the notch is outside.
    auto floor = MakeOutline(PV_APSHAPE_POINTOUTLINE);
    const double corners[6][2] = {{0, 0}, {4, 0}, {4, 1}, {1, 1}, {1, 4}, {0, 4}};
    for (const auto& c : corners) AddVector(*floor, "outlinePoint", c[0], c[1], 0.0);
    ASSERT_TRUE(floor->IsUsable());
    Coordinates arm(3.0, 0.5, 0.0), notch(3.0, 3.0, 0.0), corner(4.0, 0.0, 0.0);
    EXPECT_TRUE(floor->contains(arm));
    EXPECT_FALSE(floor->contains(notch));
    EXPECT_NEAR(Value(*floor, 4.0, 0.5, 0.0), 1.0, 1e-12);
    PointSet mesh;
    ASSERT_TRUE(floor->GetMeshPointSet(mesh.points));
    EXPECT_EQ(mesh.points.size(), 3u * 4u);
    EXPECT_NEAR(MeshArea(mesh.points), 7.0, 1e-12);

    // Outline points alone make a point outline.
    auto implied = std::make_unique<Function>();
    implied->Initialize();
    for (const auto& c : corners) AddVector(*implied, "outlinePoint", c[0], c[1], 2.0);
    EXPECT_EQ(implied->GetFunctionType(), PV_APSHAPE_POINTOUTLINE);

    // "single" reaches as far as the tolerance of the same point, 0.01.
    auto single = std::make_unique<Function>();
    single->Initialize();
    single->SetParameterValue(PN_TYP, PV_SINGLE);
    Coordinates near(0.009, 0.0, 0.0), far(0.011, 0.0, 0.0);
    EXPECT_TRUE(single->contains(near));
    EXPECT_FALSE(single->contains(far));
}

TEST(Function, PointSetsFollowRenderDetail) {
    struct Row {
        eParamValue detail;
        int first, second, third;
    };
    const Row rows[] = {{PV_RES_VERYLOW, 3, 1, 1},
                        {PV_RES_LOW, 5, 2, 3},
                        {PV_RES_MEDIUM, 7, 3, 5},
                        {PV_RES_HIGH, 15, 9, 11},
                        {PV_RES_VERYHIGH, 45, 21, 25}};
    for (const Row& row : rows) {
        auto circle = MakeOutline(PV_APSHAPE_CIRCLE);
        circle->SetParameterValue(PN_APSIZE, 2.0);
        circle->SetParameterValue(PN_RDET, row.detail);
        EXPECT_EQ(circle->GetSamplingCount(1), row.first);
        EXPECT_EQ(circle->GetSamplingCount(2), row.second);
        EXPECT_EQ(circle->GetSamplingCount(3), row.third);

        PointSet outline, mesh, render;
        ASSERT_TRUE(circle->GetOutlinePointSet(outline.points));
        EXPECT_EQ(outline.points.size(), 4u * row.first);
        for (Coordinates* p : outline.points) EXPECT_NEAR(p->GetLength(), 1.0, 1e-12);
        // A fan in the inner ring, two triangles per segment in the others.
        ASSERT_TRUE(circle->GetMeshPointSet(mesh.points));
        EXPECT_EQ(mesh.points.size(), 3u * 4u * row.first * (2u * row.second - 1u));
        const double polygon = 0.5 * 4 * row.first * std::sin(2 * M_PI / (4 * row.first));
        EXPECT_NEAR(MeshArea(mesh.points), polygon, 1e-9);
        ASSERT_TRUE(circle->GetRenderPointSet(render.points));
        EXPECT_EQ(render.points.size(), 1u + 4u * row.first * row.second);
        for (Coordinates* p : render.points) EXPECT_TRUE(circle->contains(*p));
    }

    // A square ring: the inner edge is followed when the guide edge is 1; eight triangles
    // cover the band exactly.
    auto ring = MakeOutline(PV_APSHAPE_SQUARE);
    ring->SetParameterValue(PN_APSIZEIN, 2.0);
    ring->SetParameterValue(PN_APSIZEOUT, 4.0);
    PointSet outer, inner, band, grid;
    ring->GetOutlinePointSet(outer.points);
    ring->SetGuideEdge(1);
    ring->GetOutlinePointSet(inner.points);
    ASSERT_EQ(outer.points.size(), 4u);
    ASSERT_EQ(inner.points.size(), 4u);
    EXPECT_DOUBLE_EQ(outer.points[2]->Get(0), 2.0);
    EXPECT_DOUBLE_EQ(inner.points[2]->Get(0), 1.0);
    ring->GetMeshPointSet(band.points);
    EXPECT_EQ(band.points.size(), 24u);
    EXPECT_NEAR(MeshArea(band.points), 16.0 - 4.0, 1e-12);
    ring->GetRenderPointSet(grid.points);
    EXPECT_FALSE(grid.points.empty());
    for (Coordinates* p : grid.points) EXPECT_TRUE(ring->contains(*p));
}

TEST(Function, SurfaceProfilesAndPointSets) {
    auto sphere = std::make_unique<Function>();
    sphere->Initialize();
    sphere->SetParameterValue(PN_SURFSHAP, PV_SURF_SPHERICAL);
    sphere->SetParameterValue(PN_SPHERRAD, 1.0);
    sphere->SetParameterValue(PN_CIN, 0.5);
    sphere->SetParameterValue(PN_COUT, 2.0);
    // Both branches with 2ndDerivSign 0, and the call answers false.
    std::vector<double> values;
    EXPECT_FALSE(sphere->functionOf(0.5, values));
    ASSERT_EQ(values.size(), 2u);
    EXPECT_DOUBLE_EQ(values[0], 3.0);
    EXPECT_DOUBLE_EQ(values[1], 1.0);
    values.clear();
    EXPECT_TRUE(sphere->functionOf(1.5, values));  // the rim: centreOut
    EXPECT_DOUBLE_EQ(values[0], 2.0);
    values.clear();
    EXPECT_FALSE(sphere->functionOf(1.6, values));
    EXPECT_TRUE(values.empty());
    sphere->SetParameterValue(PN_2DVSGN, 1.0);
    sphere->Recheck();
    EXPECT_TRUE(sphere->functionOf(0.5, values));
    EXPECT_DOUBLE_EQ(values[0], 3.0);
    std::vector<double> slopes;
    sphere->derivativeOf(0.5 + 0.6, slopes);
    EXPECT_DOUBLE_EQ(slopes[0], -0.6 / 0.8);

    auto poly = std::make_unique<Function>();
    poly->Initialize();
    poly->SetParameterValue(PN_SURFSHAP, PV_SURF_POLYNOMIAL);
    poly->SetParameterValue(PN_COORDSYS, PV_COORD_CYLINDRICAL);
    poly->SetParameterValue(PN_OFFSET, 1.0);
    poly->SetParameterValue(PN_MULT, 2.0);
    poly->SetParameterValue(PN_COEFF, 0.25, PU_NON, PM_NON, 0);
    poly->SetParameterValue(FUNCPAR, 2, PU_NON, PM_NON, 0);
    values.clear();
    EXPECT_TRUE(poly->functionOf(3.0, 4.0, values));  // radius 5: 1 + 2 * 0.25 * 25
    EXPECT_DOUBLE_EQ(values[0], 13.5);
    slopes.clear();
    poly->derivativeOf(2.0, slopes);
    EXPECT_DOUBLE_EQ(slopes[0], 2.0);
    std::vector<Coordinates*> onSurface;
    ASSERT_TRUE(poly->functionOf(2.0, onSurface));
    ASSERT_EQ(onSurface.size(), 1u);
    EXPECT_DOUBLE_EQ(onSurface[0]->Get(0), 2.0);
    EXPECT_DOUBLE_EQ(onSurface[0]->Get(2), 3.0);
    delete onSurface[0];

    // The grid of a surface: first sampling count squared, every vertex on the surface.
    poly->SetParameterValue(PN_SIZ, 2.0);
    poly->SetParameterValue(PN_RDET, PV_RES_LOW);
    poly->Recheck();
    PointSet render, mesh, outline;
    ASSERT_TRUE(poly->GetRenderPointSet(render.points));
    EXPECT_EQ(render.points.size(), 25u);
    ASSERT_TRUE(poly->GetMeshPointSet(mesh.points));
    EXPECT_EQ(mesh.points.size(), 3u * 2u * 16u);
    for (Coordinates* p : mesh.points) {
        const double r2 = p->Get(0) * p->Get(0) + p->Get(1) * p->Get(1);
        EXPECT_NEAR(p->Get(2), 1.0 + 0.5 * r2, 1e-12);
    }
    ASSERT_TRUE(poly->GetOutlinePointSet(outline.points));
    EXPECT_EQ(outline.points.size(), 16u);

    // The cube: eight corners and twelve triangles.
    auto cube = std::make_unique<Function>();
    cube->Initialize();
    cube->SetParameterValue(PN_SURFSHAP, PV_SURF_CUBE);
    cube->SetParameterValue(PN_SIZ, 2.0);
    PointSet corners, faces;
    ASSERT_TRUE(cube->GetRenderPointSet(corners.points));
    EXPECT_EQ(corners.points.size(), 8u);
    ASSERT_TRUE(cube->GetMeshPointSet(faces.points));
    EXPECT_EQ(faces.points.size(), 36u);
    EXPECT_NEAR(MeshArea(faces.points), 24.0, 1e-12);
}

TEST(SurfaceFunction, TestDistanceAndIntersect) {
    SurfaceFunction surface;
    surface.Initialize();
    Function* f = surface.GetFunction();
    ASSERT_NE(f, nullptr);
    f->SetParameterValue(PN_SURFSHAP, PV_SURF_SPHERICAL);
    f->SetParameterValue(PN_COORDSYS, PV_COORD_SPHERICAL);
    f->SetParameterValue(PN_SPHERRAD, 2.0);
    f->SetParameterValue(PN_COUT, 1.0);

    CoordQUICK inside(0, 0, 1.5), outside(0, 3, 1);
    EXPECT_DOUBLE_EQ(surface.TestDistance(inside), -1.5);
    EXPECT_DOUBLE_EQ(surface.TestDistance(outside), 1.0);

    LogCapture log;
    Coordinates origin(0.0, 0.0, -5.0);
    Direction up(0.0, 0.0, 1.0), sideways(1.0, 0.0, 0.0);
    EXPECT_DOUBLE_EQ(surface.TestDistance(origin, up, -1.0), 4.0);
    EXPECT_TRUE(log.Contains("SurfaceFunction::Intersect() .. done\n"));
    EXPECT_DOUBLE_EQ(surface.TestDistance(origin, up, 3.0), -1.0);
    EXPECT_DOUBLE_EQ(surface.TestDistance(origin, sideways, -1.0), -1.0);
    EXPECT_TRUE(log.Contains("SurfaceFunction::Intersect() .. done - failed\n"));

    // All crossings in order, or only the nearest; backwards as well with bothWays.
    std::vector<double> distances;
    ASSERT_TRUE(surface.Intersect(origin, up, distances, 0.0, -1.0, 0.0, false, false));
    ASSERT_EQ(distances.size(), 2u);
    EXPECT_DOUBLE_EQ(distances[1], 8.0);
    Coordinates middle(0.0, 0.0, 1.5);
    distances.clear();
    ASSERT_TRUE(surface.Intersect(middle, up, distances, 0.0, -1.0, 0.0, true, true));
    ASSERT_EQ(distances.size(), 1u);
    EXPECT_DOUBLE_EQ(distances[0], 1.5);
    distances.clear();
    // The surface shifted by 1 along its axis.
    ASSERT_TRUE(surface.Intersect(middle, up, distances, 0.0, -1.0, 1.0, false, false));
    EXPECT_DOUBLE_EQ(distances[0], 2.5);

    // One point: the nearest crossing; without nearestOnly there must be exactly one.
    Coordinates hit(3);
    ASSERT_TRUE(surface.Intersect(middle, up, hit, 0.0, -1.0, 0.0, true, true));
    EXPECT_DOUBLE_EQ(hit.Get(2), 3.0);
    EXPECT_FALSE(surface.Intersect(middle, up, hit, 0.0, -1.0, 0.0, true, false));
    EXPECT_TRUE(surface.Intersect(middle, up, hit, 0.0, -1.0, 0.0, false, false));

    // A list of points projected along the axis.
    Coordinates a(0.0, 0.0, -3.0), b(2.0, 0.0, -3.0), c(5.0, 0.0, -3.0);
    std::vector<Coordinates*> origins{&a, &b}, hits;
    EXPECT_TRUE(surface.Intersect(origins, up, hits, 0.0, -1.0, 0.0, false, true));
    ASSERT_EQ(hits.size(), 2u);
    EXPECT_DOUBLE_EQ(hits[0]->Get(2), -1.0);
    EXPECT_DOUBLE_EQ(hits[1]->Get(2), 1.0);  // touching the sphere's side
    origins.push_back(&c);
    std::vector<Coordinates*> more;
    EXPECT_FALSE(surface.Intersect(origins, up, more, 0.0, -1.0, 0.0, false, true));
    EXPECT_EQ(more.size(), 2u);
    for (Coordinates* p : hits) delete p;
    for (Coordinates* p : more) delete p;

    CoordQUICK top(0, 0, 3);
    DirQUICK normal;
    ASSERT_TRUE(surface.GetNormal(top, normal));
    EXPECT_DOUBLE_EQ(normal.data[2], 1.0);
    EXPECT_FALSE(surface.HasExactPointSet());
    f->SetParameterValue(PN_COORDSYS, PV_COORD_CYLINDRICAL);
    f->Recheck();
    EXPECT_DOUBLE_EQ(surface.TestDistance(inside), -1.0);
    f->SetParameterValue(PN_SURFSHAP, PV_SURF_CUBE);
    surface.QuickSetToChildren(true);
    EXPECT_TRUE(surface.HasExactPointSet());
}

TEST(Aperture, ClipsItsSurfaceAndReadsItsOwnersParameters) {
    // An owner holds the parameters, as an interface does; the aperture and the surface
    // read them through their functions.
    auto owner = std::unique_ptr<SampleNode>(SampleNode::MakeUnder(nullptr, "face"));
    owner->SetParameterValue(PN_APSHAP, PV_APSHAPE_CIRCLE);
    owner->SetParameterValue(PN_SPHERRAD, 0.5);
    owner->SetParameterValue(PN_SURFSHAP, PV_SURF_FLAT);
    owner->SetParameterValue(PN_SURFOFFSET, 2.0);
    auto* aperture = new Aperture();
    aperture->Initialize();
    owner->AddChild(aperture);
    auto* shape = new SurfaceShape();
    shape->Initialize();
    owner->AddChild(shape);
    EXPECT_EQ(aperture->GetFunction()->GetFunctionType(), PV_APSHAPE_CIRCLE);
    EXPECT_EQ(shape->GetSurfaceFunction()->GetFunction()->GetFunctionType(), PV_SURF_FLAT);
    EXPECT_TRUE(shape->HasExactPointSet());
    EXPECT_FALSE(aperture->HasExactPointSet());

    // Without a surface the aperture lies in its own plane, z = 2 here (surfaceOffset).
    Coordinates origin(0.2, 0.0, 0.0), wide(0.9, 0.0, 0.0);
    Direction up(0.0, 0.0, 1.0);
    double distance = -1.0;
    ASSERT_TRUE(aperture->Distance(origin, up, distance, 0.0, -1.0));
    EXPECT_DOUBLE_EQ(distance, 2.0);
    EXPECT_FALSE(aperture->Distance(wide, up, distance, 0.0, -1.0));
    EXPECT_FALSE(aperture->Distance(origin, up, distance, 0.0, 1.0));

    // Linked to a sphere, the aperture clips it: the lower cap of radius 1 about z = 2. The
    // circle takes the same sphericalRadius.
    owner->SetParameterValue(PN_SURFSHAP, PV_SURF_SPHERICAL);
    owner->SetParameterValue(PN_COORDSYS, PV_COORD_SPHERICAL);
    owner->SetParameterValue(PN_SPHERRAD, 1.0);
    owner->SetParameterValue(PN_COUT, 2.0);
    owner->SetParameterValue(PN_2DVSGN, -1.0);
    shape->QuickSetToChildren(true);
    aperture->QuickSetToChildren(true);
    aperture->SetShape(shape);
    shape->SetAperture(aperture);
    EXPECT_EQ(shape->GetAperture(), aperture);
    Coordinates axisOrigin(0.0, 0.0, 0.0);
    ASSERT_TRUE(aperture->Distance(axisOrigin, up, distance, 0.0, -1.0));
    EXPECT_DOUBLE_EQ(distance, 1.0);
    ASSERT_TRUE(aperture->Distance(origin, up, distance, 0.0, -1.0));
    EXPECT_NEAR(distance, 2.0 - std::sqrt(1.0 - 0.04), 1e-12);

    CoordQUICK bottom(0, 0, 1);
    DirQUICK normal;
    ASSERT_TRUE(aperture->GetNormal(bottom, normal));
    EXPECT_DOUBLE_EQ(normal.data[2], -1.0);
    EXPECT_DOUBLE_EQ(shape->TestDistance(bottom), 0.0);
    aperture->SetShape(nullptr);
    ASSERT_TRUE(aperture->GetNormal(bottom, normal));
    EXPECT_DOUBLE_EQ(normal.data[2], 1.0);

    Coordinates in(0.1, 0.1, 9.0), out(1.1, 0.0, 0.0), corner(0.9, 0.9, 0.0);
    EXPECT_TRUE(aperture->Contains(in));
    EXPECT_LT(aperture->gap(in), 0.0);
    EXPECT_GT(aperture->gap(out), 0.0);
    EXPECT_FALSE(aperture->Contains(corner));

    // The owner changes the shape: the holders pass the rebuild on.
    owner->SetParameterValue(PN_APSHAP, PV_APSHAPE_SQUARE);
    owner->SetParameterValue(PN_APSIZE, 2.0);
    aperture->QuickSetToChildren(true);
    EXPECT_TRUE(aperture->HasExactPointSet());
    EXPECT_TRUE(aperture->Contains(corner));
    PointSet corners, render, triangles;
    EXPECT_TRUE(aperture->GetOutlinePointSet(corners.points));
    EXPECT_EQ(corners.points.size(), 4u);
    EXPECT_TRUE(aperture->GetMeshPointSet(triangles.points));
    EXPECT_EQ(triangles.points.size(), 6u);
    EXPECT_TRUE(aperture->GetRenderPointSet(render.points));
    EXPECT_TRUE(aperture->SetGuideEdge(2));
    PointSet surfacePoints;
    EXPECT_TRUE(shape->GetRenderPointSet(surfacePoints.points));
}
