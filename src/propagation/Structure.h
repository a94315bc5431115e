#pragma once

#include <string>
#include <vector>

#include "framework/Component.h"
#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"
#include "propagation/FreqResponseArray.h"

class CElement;
class Coordinates;
class Interface;
class OpticElement;
class Volume;

// What a user draws: a wall, a floor, a corridor, a city block. A structure owns parameters,
// a path of points and its per-frequency losses only. When it is rebuilt it discards the
// interfaces and volumes it made before and has its parent OpticElement make new ones; those
// are the element's children, never saved, because they follow from the structure.
//
// The vector of int holds the object ids of the interfaces it made: removal goes by id, so
// a face the element has destroyed meanwhile is simply passed over. The vector of
// Interface* holds the same faces as fast handles. The FreqResponseArray holds the loss
// entries, which every face and volume made here refers to.
class Structure : public Component,
                  public std::vector<int>,
                  public std::vector<Interface*>,
                  public FreqResponseArray {
public:
    using FaceIds = std::vector<int>;
    using Faces = std::vector<Interface*>;

    Structure(const Structure&) = delete;
    Structure& operator=(const Structure&) = delete;
    // The faces and volumes made here, which live on under the element, let go of the
    // loss entries that go with this structure.
    ~Structure() override;

    // The parameters, then the points and the "FreqResponse" loss entries; then a rebuild
    // as PrepareReload sets it up. A failed rebuild is logged and does not fail the load.
    bool FromXml(CElement* element) override;
    // Reads the fields. A parameter written since the last reading marks the structure for
    // a rebuild of all its parts.
    bool checkParams() override;
    void Print() override;

    // Appends a copy of the point to the path.
    bool AddPoint(const Coordinates& point);
    std::vector<Coordinates*> GetPoints();
    // Removes the interfaces made here (but an "outerLimit") and the volumes made here from
    // the element, destroying them, and forgets them.
    bool RemoveBuilt();

    // Gives a new face what it takes from the structure: colour and brightness of the
    // medium, the listed parameters, the joins (both ways) to the default volume and to this
    // structure's volume, reflect, transmit and their ratios, and the loss entries. The face
    // is marked not saved and recorded as made here.
    static bool PassToInterface(Structure* from, Interface* face);

    bool GetReflect() const { return reflect; }
    bool GetTransmit() const { return transmit; }
    double GetReflectRatio() const { return reflectRatio; }
    double GetTransmitRatio() const { return transmitRatio; }
    double GetThickness() const { return thickness; }
    double GetHeight() const { return height; }
    const std::string& GetMediumName() const { return mediumName; }
    int GetVolumeId() const { return volumeId; }
    bool GetNeedsRebuild() const { return needsRebuild; }

protected:
    // Only the kinds of structure are made.
    Structure();

    // A square in the ground plane: its centre and its side.
    struct sSquare {
        double x;
        double y;
        double size;
    };

    // A face between two points: a kind with its base, height and, when above 0, width. A
    // flat strip ("pointPointWidth") lies at the level height.
    struct sStrip {
        const char* name;
        eParamValue type;
        double base;
        double height;
        double width;
    };

    // A box in the element's frame: its centre, its main axis and second axis, and its
    // extents along those and along the third axis (main cross second), its thickness.
    struct sBox {
        CoordQUICK centre;
        DirQUICK along;
        DirQUICK second;
        double length;
        double span;
        double thickness;
    };

    // Sets the structure up for the rebuild that ends a load; nothing by default.
    virtual void PrepareReload();
    // The parent as an OpticElement; without one, logs at level 1 and gives null.
    OpticElement* GetElement(const char* caller);
    // The value of the parameter, or fallback when it is missing.
    template <typename T>
    T ReadOr(eParamName name, T fallback);

    // A new interface of the element under that name and of that type.
    static Interface* MakeFace(OpticElement* element, const std::string& name, eParamValue type);
    // The strip between the two points under the name, passed the structure's parameters.
    Interface* MakeStripFace(OpticElement* element, const sStrip& strip, const std::string& name,
                             const Coordinates& from, const Coordinates& to);
    // A face that spans the path's outline at the level: the polygon kind on a flat surface
    // through the points, or with no points an "apertureFunction" square. Passed the
    // structure's parameters.
    Interface* MakeOutlineFace(OpticElement* element, const std::string& name, double level,
                               const sSquare& square);
    // The side "apertureExtend" of length between the two finished outlines start and end,
    // which guide it. Passed the structure's parameters and finished.
    Interface* MakeGuidedSide(OpticElement* element, const std::string& name, double length,
                              Interface* start, Interface* end);
    // A new volume "barrierVol" with this structure's medium and loss entries, not saved.
    // It becomes the structure's volume, which later faces join.
    Volume* MakeVolume(OpticElement* element);
    // Sizes and places a volume of the wall shape so that it holds just the box, carried
    // along with the element's own transformation.
    static void PlaceBox(Volume* volume, const sBox& box);
    // Lets the face build its children and take its place. A surface kind gets its shape
    // and aperture first, the aperture the vertical "Axis" along which it projects, and a
    // strip or polygon its points as the aperture's outline.
    static void FinishFace(Interface* face);

    bool reflect = true;
    bool transmit = true;
    double reflectRatio = 1.0;
    double transmitRatio = 1.0;
    double thickness = 0.0;
    double height = 1.0;
    std::string mediumName;
    int volumeId = -1;
    // The path as it stood when the current build began.
    std::vector<Coordinates*> points;
    // True while the next rebuild must build every part.
    bool needsRebuild = true;
    // Faces take "show" and "showAs" besides the common list.
    bool passShow = false;

private:
    // Loads the component, the points and the loss entries.
    bool LoadStructure(CElement* element);
    // Joins the face to the volume and the volume to the face; nothing for a null volume.
    static void Join(Interface* face, Volume* volume);
    static bool RemoveFace(Interface* face);
    static bool RemoveVolume(Volume* volume);

    // Object ids of every volume made since the last removal.
    std::vector<int> volumeIds;
};

template <typename T>
T Structure::ReadOr(eParamName name, T fallback) {
    T value = fallback;
    return GetParameterValue(name, value) ? value : fallback;
}
