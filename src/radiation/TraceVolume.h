#pragma once

#include <map>
#include <string>

#include "framework/Component.h"
#include "framework/ParamTypes.h"

class Coordinates;
class OpticElement;
class TestPoint;

// A regular grid of test points over a box, or over an area of the earth: a coverage map.
// The points are children of the element that holds the grid, not of the grid; the grid
// knows them by object id under their grid index k + nz * i * ny + nz * j.
class TraceVolume : public Component {
public:
    TraceVolume();
    ~TraceVolume() override;

    // Makes one test point per cell through the element: at the cell centres of the box
    // when it is wider than 1 in x, else over the geographic limits of the element.
    bool InitTestPoints(OpticElement* parent);
    // Nothing to reset: the points are rebuilt by InitTestPoints.
    bool ResetTestPoints();
    // Reads RenderBy and RenderLayerHeight.
    bool checkParams() override;

    bool SetLimits(double xMin, double yMin, double zMin, double xMax, double yMax, double zMax);
    // A z count below 1 becomes 1; the x and y counts stay as given.
    bool SetDim(int nx, int ny, int nz);
    // Strictly inside on each axis, or anything on an axis whose min equals its max.
    bool Contains(double x, double y, double z) const;
    bool SetPowerRange(double min, double max);
    // The display threshold plays no part here.
    bool SetRendThreshold(double threshold);
    // What the volume shows: only "heatmap" exports a grid.
    bool SetRendProperty(eParamValue property);
    bool SetColorScale(eParamValue scale);

    // The grid corners with the power columns, when the volume renders a heatmap; false
    // otherwise. A file that cannot be opened is reported and still counts as done.
    bool Export(const std::string& path);

    // The centre of cell (i, j, k) and its colour from the power of its test point within
    // the power range; false for a cell outside the grid or without a live point.
    bool GetXYZRGBFromIJK(int i, int j, int k, double& x, double& y, double& z, double& r,
                          double& g, double& b);
    bool GetCoordColorFromIJK(int i, int j, int k, Coordinates& position, Coordinates& colour);

    // The grid index of cell (i, j, k).
    int GridIndex(int i, int j, int k) const { return k + nz * i * ny + nz * j; }
    // The object id of the point of the cell, or -1.
    int GetPointId(int i, int j, int k) const;
    const std::map<int, int>& GetPointIds() const { return pointIds; }
    int GetNx() const { return nx; }
    int GetNy() const { return ny; }
    int GetNz() const { return nz; }
    eParamValue GetRenderBy() const { return renderBy; }
    double GetPowerMin() const { return powerMin; }
    double GetPowerMax() const { return powerMax; }

private:
    // The grid of the box: one named point per cell centre.
    bool InitCartesianPoints(OpticElement* parent);
    // The grid over the element's longitude and latitude limits.
    bool InitGeographicPoints(OpticElement* parent);
    // Notes the point's id under the cell's grid index; false for no point.
    bool StorePoint(int i, int j, int k, TestPoint* point);
    // Whether the element that holds the grid has any source.
    bool HasSources() const;
    // The range of layers to export: one layer at RenderLayerHeight, else all.
    void LayerRange(int& first, int& last) const;
    // The colour of a power within the range, by the colour scale.
    void PowerToColour(double powerDB, double& r, double& g, double& b) const;

    double xMin = 0.0;
    double yMin = 0.0;
    double zMin = 0.0;
    double xMax = 0.0;
    double yMax = 0.0;
    double zMax = 0.0;
    int nx = 0;
    int ny = 0;
    int nz = 1;
    std::map<int, int> pointIds;
    eParamValue renderBy = PV_HEATMAP;
    double renderLayerHeight = 0.0;
    bool hasLayerHeight = false;
    double powerMin = -120.0;
    double powerMax = 0.0;
    eParamValue colorScale = PV_EMPTY;
};
