#pragma once

#include <string>

#include "framework/Component.h"

class BeamQUICK;
class CElement;
class Direction;
class RadiationPattern;
class RayLayout;

// The editable description of one launch: a ray layout that decides where the rays go and
// a radiation pattern that decides how much power each carries. Both are children. Loading
// fills a beam of rays from them.
class Beam : public Component {
public:
    Beam();
    ~Beam() override;

    // Turns the shape actions "line", "star6" and "square" into the layout's "shapeLine",
    // "shapeStar6" and "shapeSquare"; any other action is the base's.
    bool ReceiveAction(const std::string& action, double x, double y) override;
    bool Empty() override;
    // The parameters, then the children "RayLayout" and "RadiationPattern".
    bool FromXml(CElement* element) override;
    // Renews the children and feeds them this beam's parameters, with the number of test
    // rays worked out from count and testRatio.
    bool QuickSetToChildren(bool force) override;
    // A fresh default layout and a fresh pattern replace the children.
    bool Initialize() override;
    // The beam's actions are those of its layout.
    bool SetActions(int actions) override;
    void Print() override;

    // A fresh layout with its default point and axis replaces the layout child.
    bool InitializeLayout();
    RayLayout* GetRayLayoutp() { return rayLayout; }
    // The axis of the layout, or null without one.
    Direction* GetLayoutDirection();
    RadiationPattern* GetRadiationPatternp() { return radPattern; }
    // The pattern used at the next load. The pattern child stays in the tree; null loads
    // the rays with the plain source power.
    void SetRadiationPattern(RadiationPattern* pattern) { radPattern = pattern; }
    // Whether loading builds the triangles of neighbouring rays and their intensities.
    void SetUseTriRays(bool value) { useTriRays = value; }

    // Fills the beam with the test rays and rays of the layout, and stamps on each ray the
    // source power with, when there is a pattern, its gain in the ray's direction.
    bool LoadRaysFromLayout(BeamQUICK* beam);
    // Takes over the other's parameters, layout, pattern settings and triangle flag.
    bool Copy(Beam& other);

private:
    // A fresh pattern replaces the pattern child.
    void InitializePattern();
    // Sets count and testCount from count and testRatio.
    void SetTestCount();
    // The power parameter (1 without one) as a number of its own unit.
    double SourcePower();
    void StampPatternPower(BeamQUICK* beam);
    void StampPlainPower(BeamQUICK* beam);
    // Turns the rays and test rays by beamRotation about z after beamTilt about y.
    void TurnRays(BeamQUICK* beam);

    RayLayout* rayLayout = nullptr;
    RadiationPattern* radPattern = nullptr;
    bool useTriRays = false;
};
