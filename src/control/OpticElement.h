#pragma once

#include <map>
#include <string>
#include <vector>

#include "framework/Component.h"
#include "radiation/SimulationResources.h"

class Barrier;
class BatchEvent;
class CityPart;
class Coordinates;
class EMRadiation;
class EMReceiver;
class EMSource;
class FDTDWrapper;
class FreqResponse;
class FreqResponseArray;
class Importer;
class Interface;
class Ray;
class Structure;
class TestPoint;
class TraceVolume;
class Tunnel;
class Volume;
class WayLine;

// The element from which a scene is made, and the root of a wireless system. Its parameter
// `type` decides what it is: a source, a mirror, a lens, a waveguide, an object, a detector,
// an importer, a volume for a solver or for tracing, or a whole system. From its quick
// parameters it rebuilds the interfaces, volumes, sources and structures that make it up,
// and it holds the stages that pass radiation between them.
//
// The twelve vectors are fast handles on the children of each kind. The pointees are
// children by the tree's rules and owned through it, so clearing a vector destroys nothing.
class OpticElement : public std::vector<Interface*>,
                     public std::vector<EMSource*>,
                     public std::vector<EMReceiver*>,
                     public std::vector<TestPoint*>,
                     public std::vector<Volume*>,
                     public std::vector<Importer*>,
                     public std::vector<FDTDWrapper*>,
                     public std::vector<TraceVolume*>,
                     public std::vector<Barrier*>,
                     public std::vector<WayLine*>,
                     public std::vector<Tunnel*>,
                     public std::vector<CityPart*>,
                     public Component {
public:
    using Interfaces = std::vector<Interface*>;
    using Sources = std::vector<EMSource*>;
    using Receivers = std::vector<EMReceiver*>;
    using TestPoints = std::vector<TestPoint*>;
    using Volumes = std::vector<Volume*>;
    using Importers = std::vector<Importer*>;
    using Solvers = std::vector<FDTDWrapper*>;
    using TraceVolumes = std::vector<TraceVolume*>;
    using Barriers = std::vector<Barrier*>;
    using WayLines = std::vector<WayLine*>;
    using Tunnels = std::vector<Tunnel*>;
    using CityParts = std::vector<CityPart*>;

    // Kinds of barrier for AddBarrier(name, type); any other value is a plain wall.
    enum eBarrierType : int { barrierFloor = 1, barrierCeiling = 2 };

    // Names of the floor and the ceiling of a three-dimensional building.
    static const char* const _barFloorName;    // "floorBarrier"
    static const char* const _barCeilingName;  // "ceilingBarrier"

    OpticElement();
    ~OpticElement() override;

    // Forgets the handles and the loss tables, then empties the component.
    bool Empty() override;
    // The component's load, then the handles by type, the loss tables of a system, and a
    // rebuild of the system.
    bool FromXml(CElement* element) override;
    // The component, then the loss tables of a system under their own names.
    bool ToXml(CElement* element, bool leaveOutExpanded) override;
    // The entry of every rebuild: reads `type`, with force discards what was built, and
    // rebuilds a system (only with force) or a part, once per position of the layout's
    // array.
    bool QuickSetToChildren(bool force) override;
    // The base recursion, then the links by name: interfaces and sources to their volumes,
    // volumes to their media.
    bool QuickSetFromChildren() override;
    // The component's initialisation; the built-in media of the resources are filled.
    bool Initialize() override;
    void Print() override;

    // Building.
    // Rebuilds a part (source, mirror, lens, waveguide, object, detector, trace volume) from
    // its parameters. False when a required parameter is missing or the kind cannot be built
    // here.
    bool RebuildPart(bool force);
    // Rebuilds a wireless system: floor and ceiling, structures, sources, the outer limit,
    // the trace volume.
    bool RebuildSystem(bool force);
    // Makes, or with RenderBy other than "heatmap" removes, the trace volume of a system.
    bool ExpandTraceVolume(bool force);
    // Passes the system's parameters to each city part and rebuilds it.
    bool ExpandBuildings();
    // Passes the system's parameters to each barrier and rebuilds it.
    bool ExpandBarriers();
    // Passes the trace limits to each source and rebuilds it.
    bool ExpandSources(bool force);
    // Makes or updates the closed cube "outerLimit" around the system.
    bool AddOuterInterface();
    // Writes the preset of that index of newElementNames into this element, parent being the
    // element it will go under (may be null). False for an index without a preset.
    bool SetupNewElement(int index, OpticElement* parent);
    // Fills the names of the presets, once.
    static void SetNewNameStrings();
    // The preset name of an index, or an empty text.
    static std::string GetNewElementName(int index);
    // The index of a preset name, or -1.
    static int GetNewElementIndex(const std::string& name);
    // Fills the loss table with the per-frequency losses of a default material, chosen by
    // an edit option: 4 walls, 23 floor, 30 ceiling; an option below the count of built-in
    // media picks that medium.
    bool setLossValues(FreqResponseArray* table, int editOption);
    // Gives the structure copies of every entry of the loss table.
    bool passLossValues(FreqResponseArray* from, Structure* to);
    // Offers the names of the element's waylines as the choices of the object's `onWayline`.
    bool InitWithWaylines(Component* object);
    // InitWithWaylines on every source and test point.
    bool UpdateWaylineOptions();
    // Moves each source and test point that is on a wayline to where its `speed` and `delay`
    // put it at that time.
    bool UpdateMoveOnWayline(double time);
    // Display layers follow the element's parameters; the library draws nothing, so there is
    // nothing to update. Always true.
    bool UpdateLayerOptions();
    // The shift that takes an earth-centred point into the frame of a geographic scene. False,
    // and the shift untouched, when the scene has no such centre.
    bool GetGPSToXYZCentre(Coordinates& shift);
    // Sets the centre of a geographic scene: the earth-centred point that becomes its origin.
    void SetGPSToXYZCentre(const Coordinates& centre);

    // Children.
    // A new interface as a child under that name, appended to the handles, free to join any
    // volume of this element.
    Interface* AddInterface(const std::string& name);
    // A new test point; without a name it is "testPoint" with the lowest number not in use.
    // Moved to the position when one is given.
    TestPoint* AddTestPoint(Coordinates* position, bool inTraceVolume, const char* name);
    // A new source "source" with a number, at the position, with the system's settings.
    EMSource* AddEMSource(Coordinates* position);
    // A floor (type 1), a ceiling (type 2) or a plain wall, replacing a child of that name.
    Barrier* AddBarrier(const std::string& name, int barrierType);
    // A wall along the points, with the element's wall parameters.
    Barrier* AddBarrier(const std::vector<Coordinates*>& points);
    // A city block over the points, with the element's building parameters.
    CityPart* AddCityPart(const std::vector<Coordinates*>& points);
    // A wayline through the points.
    WayLine* AddWayline(const std::vector<Coordinates*>& points);
    // A new volume as a child, appended to the handles and named "vol" with its position from
    // 1. It takes the element's medium from the resources, the element's volume and shape
    // parameters, spherical coordinates and a zero "centre" point.
    Volume* AddVolume();
    // Places the object at the position: a test point's centre, otherwise the translation of
    // its layout.
    bool MoveSimObject(SimObject* object, Coordinates* position);
    // Removes a child of any kind with destruction, and its handle.
    bool RemoveElement(SimObject* object);
    bool RemoveTestPoint(TestPoint* point);
    bool RemoveEMSource(EMSource* source);
    bool RemoveBarrier(Barrier* barrier);
    bool RemoveCityPart(CityPart* part);
    bool RemoveWayLine(WayLine* line);
    bool RemoveVolume(Volume* volume);
    // Removes the trace volume; with its points, each test point that is in a trace volume.
    bool RemoveTraceVolume(bool withPoints);

    // Builds what the batch names (a wall, a building, a source, a test point) and appends the
    // ids of what it made. False for an unknown event or a point that is not a number.
    bool ReceiveBatchEvent(const BatchEvent& event, std::vector<int>& ids);

    // Stages of a trace.
    // Clears what each interface detected.
    bool ResetDetection();
    // Arms each source for the next launch.
    bool InitialTransmit(bool value);
    // Each source launches its rays into its volume.
    bool TransmitSourceToVolume();
    // Each volume that holds radiation traces it to its faces, in parallel when worth it;
    // the radiation the volumes report is appended to out (when not null).
    bool TransmitVolumeToInterface(std::vector<EMRadiation*>* out);
    // Each interface passes what it caught to its volumes, in parallel when worth it.
    bool TransmitInterfaceToVolume();
    // The nearest hit of the ray on any interface (beyond 1e-10), or -1 for none.
    double TestRay(Ray* ray);
    // Forgets what the interfaces, volumes and sources hold; true if any held something.
    bool ClearReceivedRadiation();

    // The task functions of the two transmit stages.
    static void* TraceVolumeToFacesTask(void* content);
    static void* TraceInterfaceToVolumeTask(void* content);
    // The number of tasks the last TransmitVolumeToInterface ran: 1 for a serial pass, one
    // per active volume for a parallel one, 0 when nothing was held.
    int GetLastVolumeTaskCount() const { return lastVolumeTaskCount; }
    // Whether a stage over count items runs in parallel: forced, or available and more than
    // 2 items and threads to spare.
    static bool RunParallel(eParallelSection section, int count);

    eParamValue GetElementType() const { return elementType; }
    FreqResponseArray* GetWallResponse() const { return wallResponse; }
    FreqResponseArray* GetFloorResponse() const { return floorResponse; }
    FreqResponseArray* GetCeilingResponse() const { return ceilingResponse; }
    // Replaces a loss table of a system with a new, empty one, which the element owns.
    FreqResponseArray* NewWallResponse();
    FreqResponseArray* NewFloorResponse();
    FreqResponseArray* NewCeilingResponse();
    // Makes an entry of a loss table a child that the tree owns; the entry is saved with
    // its table, not as a child.
    void AdoptResponse(FreqResponse* entry);

    // The media of the simulation and the id of the volume that surrounds every scene.
    static SimulationResources resources;
    // Preset names by index.
    static std::map<int, std::string> newElementNames;
    // Elements by their element index.
    static std::map<int, OpticElement*> opticElementMap;

    // Values of `Dimensions`.
    static constexpr eParamNumber DIMENSIONS_1D = static_cast<eParamNumber>(3);
    static constexpr eParamNumber DIMENSIONS_2D = static_cast<eParamNumber>(4);
    static constexpr eParamNumber DIMENSIONS_3D = static_cast<eParamNumber>(5);

private:
    // Gives each of the element's parameters of those names to the component; a parameter the
    // element lacks is left out.
    void PassParameters(const std::vector<eParamName>& names, Component* to);
    // The value of the parameter, or fallback when it is missing.
    template <typename T>
    T ReadOr(eParamName name, T fallback);

    // Empties the twelve vectors of handles.
    void ClearHandles();
    // "prefix" with the lowest number from 0 that no child's name uses.
    std::string NextFreeName(const std::string& prefix);
    // Takes the face out of its volumes, its handle and the tree, destroying it.
    bool RemoveInterface(Interface* face);
    // RemoveInterface on every interface child; the structures forget their face handles.
    void RemoveInterfaces();
    // Removes every volume child and forgets the handles.
    void RemoveVolumes();
    // Removes the children of the kinds a part builds and forgets their handles.
    void RemovePartChildren();
    // Moves the object along its wayline, if it is on one.
    bool MoveOnWayline(Component* object, double time);
    static FreqResponseArray* ReplaceResponse(FreqResponseArray*& table);
    // Makes the volume that surrounds every scene, when none is alive, and owns it.
    Volume* SurroundingVolume();
    // Deletes the surrounding volume this element made.
    void ReleaseSurroundingVolume();
    // Links every interface and source to the volume named by its `volume` parameters, and
    // every volume to its medium.
    void LinkByNames();
    // Reads the loss tables of a system from the sub-elements of those names.
    bool LoadResponses(CElement* element);
    // The part kinds of RebuildPart.
    bool RebuildSource();
    bool RebuildMirror();
    bool RebuildLens(bool waveguide);
    bool RebuildObject();
    bool RebuildDetector();
    bool RebuildTraceVolume();
    // A face of a part: a new interface of that name and type, the reflect and transmit
    // settings of the element, made and placed, and joined to the volume inside (when not
    // null) and to the surrounding volume.
    Interface* MakePartFace(const std::string& name, eParamValue type, Volume* inside);
    // Makes the face's children, places it and joins it to the volumes.
    void FinishPartFace(Interface* face, Volume* inside);
    // Sets the limits and the dimensions of a trace volume from the element's parameters.
    void SizeTraceVolume(TraceVolume* grid);
    // Sets the power range of a trace volume's display.
    void SetTraceVolumePowerRange(TraceVolume* grid);

    eParamValue elementType = PV_EMPTY;
    // The volume that surrounds every scene, when this element made it.
    Volume* surroundingVolume = nullptr;
    FreqResponseArray* wallResponse = nullptr;
    FreqResponseArray* floorResponse = nullptr;
    FreqResponseArray* ceilingResponse = nullptr;
    struct sGpsCentre {
        bool set = false;
        double x = 0.0;
        double y = 0.0;
        double z = 0.0;
    } gpsCentre;
    int lastVolumeTaskCount = 0;

    static bool namesSet;

    // The element's parameters that every new volume takes over under the same name: the
    // profile, then the shape.
    static const std::vector<eParamName> volumeProfileParameters;
    static const std::vector<eParamName> volumeShapeParameters;
};

template <typename T>
T OpticElement::ReadOr(eParamName name, T fallback) {
    T value = fallback;
    return GetParameterValue(name, value) ? value : fallback;
}
