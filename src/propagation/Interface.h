#pragma once

#include <atomic>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "framework/Component.h"
#include "framework/Lockable.h"
#include "framework/ParamTypes.h"
#include "geometry/CoordQUICK.h"
#include "geometry/DirQUICK.h"

class Aperture;
class Array;
class BeamQUICK;
class CElement;
class Coordinates;
class Detection;
class Direction;
struct DiffractSource;
class EMRadiation;
class FreqResponseArray;
class Importer;
class Medium;
class MeshGroup;
class Ray;
class SurfaceShape;
class Volume;
struct RayFaceMiss;
struct TriRay;

// One surface of a scene: a wall face, a floor, the side of a volume, a whole model. It
// decides whether and where a ray meets it, keeps the rays that did in one receiving beam
// per source beam, and turns them into the next generation of rays for the volumes on its
// two sides.
//
// The parameter type selects the kind of surface (PV_TYPE_*). The point-to-point kinds, the
// polygon kind, exact apertures on flat surfaces, guided sides and cubes are reduced to
// triangles the first time a ray asks; the other kinds are tested in closed form through
// the SurfaceShape and Aperture children. A "3dModel" interface keeps its model, but has no
// mesh and takes no hits until models can be read.
//
// Besides its object id, which rays carry as their interface ids, every interface has a
// process-wide number of its own and is entered in a table under it while it lives.
//
// The interface's lock guards the building of its mesh, the closed-form surface code (which
// keeps scratch state of its own), the table of receiving beams and the reads of its
// parameters while it transmits.
class Interface : public Component, public Lockable {
public:
    Interface();
    Interface(const Interface&) = delete;
    Interface& operator=(const Interface&) = delete;
    ~Interface() override;

    // Deletes the mesh, forgets received beams, edge events and guides, then empties the
    // component; the shape, aperture and detection children go with it.
    bool Empty() override;
    // The parameters, then the children "SurfaceShape" and "Aperture" and the "Volume"
    // elements; links shape and aperture when both are present.
    bool FromXml(CElement* element) override;
    // Reads reflect, transmit, their ratios, scaleLowLimit and the aperture sizes into the
    // fields.
    bool checkParams() override;
    // Rebuilding from the parameters: the shape and aperture of the closed-form kinds are
    // made when missing, the fields are read again and the mesh is dropped, to be rebuilt
    // when the next ray asks.
    bool QuickSetToChildren(bool force) override;

    // The process-wide number of this interface, and the live interface with that number.
    int GetInterfaceId() const { return interfaceId; }
    static Interface* GetInterfaceFromId(int id);
    // Every live interface, in the order of their numbers.
    static std::vector<Interface*> GetInterfaceList();

    // --- Hit testing ---

    // The distance to this surface along the ray, or -1; limit -1 means none.
    double TestRayHit(Ray* ray, double limit);
    // Tests the rays list[first] .. list[last - 1] and leaves the result on each ray: a
    // closer hit than the ray holds sets its length, hit normal and endInterfaceId. A tie
    // keeps what the ray holds. Rays past their trace limit are skipped.
    bool TestRaysHit(std::vector<Ray*>* list, int first, int last);
    // The geometric core: distance from origin along dir to the surface, or -1. A hit
    // writes the surface normal to normal when it is not null. Takes no lock.
    double TestHitDistance(CoordQUICK& origin, DirQUICK& dir, DirQUICK* normal, double limit);
    // Signed distance of the point from a closed surface, negative inside; -1 for the
    // other kinds.
    double TestHitDistance(CoordQUICK& point);
    bool Contains(CoordQUICK& point);
    // True when the ray can reach the bounding sphere: it starts inside it, or the sphere
    // lies ahead within the ray's length. True as well when there is no sphere.
    bool TestRayCentreSize(Ray* ray);
    // The same test against a sphere the caller read once through getCentreAndSize, so a
    // slice of rays reads the interface's sphere a single time.
    static bool RayReachesSphere(Ray* ray, const CoordQUICK& sphereCentre, double radius);
    // The bounding sphere; false when there is none.
    bool getCentreAndSize(CoordQUICK& outCentre, double& outSize);
    bool hasCentreAndSize();
    // Near misses of the ray with the diffracting edges of the mesh, appended to misses.
    // The number of records added, or -1 without a mesh. Takes no lock: the caller holds
    // the interface's lock.
    double TestRayMiss(Ray* ray, std::vector<RayFaceMiss*>& misses, double gap);
    double TestMissDistance(Ray* ray, std::vector<RayFaceMiss*>& misses, double& gap);
    // Not a question an interface answers: reports the call and gives -1.
    double TestMissDistance(CoordQUICK& point);
    // The smallest hit distance over the test rays, or -1.
    double TestRadiation(EMRadiation* radiation);
    double TestRadiation(BeamQUICK* beam);
    double TestRad(EMRadiation* radiation, double best);
    double TestRad(BeamQUICK* beam, double best);
    // True when test rays can walk the mesh directly.
    bool CanTestRad();
    // The surface normal at the point.
    bool GetNormal(CoordQUICK& point, DirQUICK& normal);

    // --- Meshes ---

    // Builds the exact mesh for the kinds that have one, once, then the bounding sphere.
    bool CheckForExactPointSet();
    // Rebuilds the mesh of the deferred kinds.
    bool GenerateMesh();
    // Whether a mesh walk can go on, building what is missing first.
    bool ContinueMeshTest();
    void NeedGenerateMesh() { needsMesh = true; }
    const std::vector<MeshGroup*>& GetMeshGroups() const { return meshGroups; }
    bool HasExactMesh() const { return hasExactMesh; }
    bool GetExactChecked() const { return exactChecked.load(); }
    bool GetNeedsMesh() const { return needsMesh; }
    // The point list of the point-to-point and polygon kinds; the points belong to the
    // interface as its children.
    bool AddBarrierPoint(const Coordinates& point);
    bool ClearBarrierPoints();
    std::vector<Coordinates*>& GetBarrierPoints() { return barrierPoints; }

    // --- Reception and output ---

    bool ReceiveTestRay(Ray* ray);
    // Adds the ray to the receiving beam of its source beam; beams may be null.
    bool ReceiveRay(Ray* ray, std::map<int, BeamQUICK*>* beams);
    bool ReceiveTriRays(std::vector<TriRay*>* triangles);
    // The beam that collects the rays of the source beam, made at first use.
    BeamQUICK* GetReceivingBeam(int sourceBeamId);
    // A new receiving beam like the source beam; the caller holds the interface's lock.
    BeamQUICK* NextReceivedBeam(BeamQUICK* source);
    // Makes the next generation from every receiving beam and hands it to the volumes.
    bool TransmitRadiation();
    // Forgets the receiving beams (deleting them with deleteBeams) and the edge events.
    bool ClearReceivedRadiation(bool deleteBeams);
    const std::map<int, int>& GetReceivedBeams() const { return receivedBeams; }
    std::vector<DiffractSource>& GetDiffractSources() { return diffractSources; }
    // Notes the radiation whose rays are received next, for the direct hit loop of
    // EMRadiation::TransmitToInterfaces; under the interface's lock.
    bool NextRadiation(int radiationId) {
        lock(true);
        currentRadiationId = radiationId;
        unlock();
        return true;
    }
    int GetCurrentRadiation() const { return currentRadiationId; }

    // --- Loss ---

    // Linear power factor of a reflection by the loss model.
    double getReflectPowerLossREL(eParamValue model, Ray* ray, double angle, double permittivity1,
                                  double permittivity2);
    // dB change of a transmission by the loss model, negative for a loss.
    double getTransmitPowerLossDB(eParamValue model, Ray* ray, double angle, double permittivity1,
                                  double permittivity2);
    static bool IsTotalInternalReflection(double angle, double permittivity1, double permittivity2);
    // Sine of the refraction angle for an incidence angle in degrees.
    static double GetSinTxAngle(double angle, double permittivity1, double permittivity2);

    // --- Setup ---

    bool SetGuideInterfaces_outer(Interface* start, Interface* end);
    bool SetGuideInterfaces_inner(Interface* start, Interface* end);
    Interface* GetGuideStart() const { return guideStart; }
    Interface* GetGuideEnd() const { return guideEnd; }
    // Joins a volume to one side: the first free of volumeA and volumeB. False for a null
    // or unknown volume, one joined already, or when both sides are taken.
    bool AddVolume(Volume* volume);
    bool AddVolume(int volumeId);
    bool RemoveVolume(Volume* volume);
    bool RemoveVolume(int volumeId);
    // The volumes the interface can be joined to: a copy of the list.
    bool SetAvailableVolumes(const std::vector<Volume*>& available);
    const std::vector<Volume*>& GetAvailableVolumes() const { return volumes; }
    int GetVolumeA() const { return volumeA; }
    int GetVolumeB() const { return volumeB; }
    // Makes (true) or destroys (false) the detection child.
    bool SetDetection(bool on);
    // Empties what the detection has collected.
    bool ClearDetection();
    Detection* GetDetection() const { return detection; }
    bool SetModel(Importer* newModel);
    Importer* GetModel() const { return model; }

    SurfaceShape* GetShape() const { return shape; }
    Aperture* GetAperture() const { return aperture; }
    bool GetHasShape() const { return hasShape; }
    bool GetHasAperture() const { return hasAperture; }
    // The shape and aperture children, made when missing and linked to each other.
    bool MakeShapeAndAperture();
    double GetApertureOuterSize() const { return apertureOuterSize; }
    // The fan layout of diffuse reflection and transmission, made as a child at first use.
    Array* GetDiffuseArray();
    bool GetReflect() const { return reflect; }
    void SetReflect(bool value) { reflect = value; }
    bool GetTransmit() const { return transmit; }
    void SetTransmit(bool value) { transmit = value; }
    double GetReflectRatio() const { return reflectRatio; }
    void SetReflectRatio(double value) { reflectRatio = value; }
    double GetTransmitRatio() const { return transmitRatio; }
    void SetTransmitRatio(double value) { transmitRatio = value; }
    double GetLimitRatio() const { return limitRatio; }
    bool GetHalfLoss() const { return halfLoss; }
    void SetHalfLoss(bool value) { halfLoss = value; }
    bool GetNoHits() const { return noHits; }
    void SetNoHits(bool value) { noHits = value; }
    FreqResponseArray* GetResponse() const { return response; }
    void SetResponse(FreqResponseArray* value) { response = value; }

private:
    struct SideMedia;

    // The parameter type, or PV_EMPTY.
    eParamValue GetSurfaceType();
    // The kind as the last check of parameters or of the mesh read it: the tests of rays
    // dispatch on this copy and never read parameters, which other threads read too.
    bool IsType(eParamValue kind) const { return surfaceType == kind; }
    // The kinds tested as a SurfaceShape clipped by an Aperture.
    bool IsApertureKind();
    // Builders of CheckForExactPointSet and GenerateMesh; true when they made a mesh.
    bool MeshPointPoint(double width);
    bool MeshApertureFan();
    bool MeshPolygon();
    bool MeshGuidedSide(int segments);
    bool MeshCube();
    bool MeshApertureTriangles();
    // The number of bands of a generated guided side.
    int GuidedSideSegments();
    // The aperture's child "Axis" as a unit direction; logs and fails when it is missing.
    bool GetAxis(Direction& axis);
    // Projects points along the axis onto the surface; the hits are new and the caller's.
    bool ProjectOntoSurface(std::vector<Coordinates*>& points, Direction& axis,
                            std::vector<Coordinates*>& projected);
    // The aperture's outline (or its mesh points) projected onto the surface along "Axis".
    bool ProjectedAperturePoints(bool meshPoints, std::vector<CoordQUICK>& points);
    // The outline of a guide projected onto its surface along its axis.
    static bool GuideOutline(Interface* guide, std::vector<CoordQUICK>& outline);
    // The unit normal of a closed outline, by the sense in which it runs.
    static bool getOutlineNormal(const std::vector<CoordQUICK>& points, DirQUICK& normal);
    // One new group of the triangles given three corners at a time; an edge shared by two of
    // them is inside the surface and does not diffract.
    void AddTriangleGroup(const std::vector<CoordQUICK>& corners);
    void DeleteMesh();
    // Forgets the mesh and its check, so that the next ray builds them again.
    void ResetMesh();
    // Centre and bounding radius from the mesh groups.
    void ComputeBoundingSphere();
    // The distances of the kinds, -1 for none.
    double ApertureFunctionDistance(CoordQUICK& origin, DirQUICK& dir, double limit);
    double ApertureExtendDistance(CoordQUICK& origin, DirQUICK& dir, double limit);
    double ClosedSurfaceDistance(CoordQUICK& origin, DirQUICK& dir, double limit);
    double MeshDistance(CoordQUICK& origin, DirQUICK& dir, DirQUICK* normal, double limit);
    // True when the point lies between the projections of itself onto the two guides.
    bool BetweenGuides(Coordinates& point);
    // The two halves of TestRaysHit.
    void TestRaysOnMesh(std::vector<Ray*>& list, int first, int last);
    void TestRaysOnSurface(std::vector<Ray*>& list, int first, int last);
    // Smallest test-ray distance of one beam, by TestRad or TestRayHit.
    double TestBeamRays(BeamQUICK* beam, double best);
    // The volumes and media on the beam's side and on the far side.
    bool ResolveSides(BeamQUICK* beam, SideMedia& sides);
    // One receiving beam through transmit management into new beams.
    bool TransmitBeam(BeamQUICK* beam, double minTracePower);
    // The edge events, grouped by the volume their rays ran in.
    bool TransmitDiffraction(double minTracePower);
    // Deletes the rays under minTracePower at their origin.
    static void CheckPowerLevel(std::vector<Ray*>& rays, double minTracePower);
    // A new beam of the rays and test rays, handed to the volume under its lock; nothing is
    // made of two empty lists.
    static bool AddBeamFromRays(std::vector<Ray*>& rays, std::vector<Ray*>* testRays,
                                Volume* volume, const std::string& sourceName);
    // The five profile parameters, copied from this interface to the detection.
    bool PassProfileParameters(Component* to);
    bool SetGuides(Interface* start, Interface* end);
    void Register();
    void Unregister();

    std::vector<Coordinates*> barrierPoints;
    std::map<int, int> receivedBeams;
    std::vector<DiffractSource> diffractSources;
    std::vector<MeshGroup*> meshGroups;
    SurfaceShape* shape = nullptr;
    bool hasShape = false;
    Aperture* aperture = nullptr;
    bool hasAperture = false;
    double apertureOuterSize = -1.0;
    Interface* guideStart = nullptr;
    Interface* guideEnd = nullptr;
    int guideEdge = -1;
    Importer* model = nullptr;
    Array* diffuseArray = nullptr;
    CoordQUICK centre{0.0, 0.0, 0.0};
    double boundRadius = -1.0;
    Detection* detection = nullptr;
    bool reflect = true;
    bool transmit = true;
    double reflectRatio = 1.0;
    double transmitRatio = 1.0;
    double limitRatio = -1.0;
    bool halfLoss = false;
    bool noHits = false;
    FreqResponseArray* response = nullptr;
    bool hasExactMesh = false;
    // Set last by CheckForExactPointSet with release order, after the mesh and the sphere:
    // a thread that reads it true with acquire order, without the lock, sees both complete.
    // Cleared first by the resets, which run while no ray is traced.
    std::atomic<bool> exactChecked{false};
    bool needsMesh = true;
    std::vector<Volume*> volumes;
    // Object ids of the volumes on the two sides; -1 when unset.
    int volumeA = -1;
    int volumeB = -1;
    int interfaceId = -1;
    eParamValue surfaceType = PV_EMPTY;
    // Receiving beams already turned into the next generation.
    std::set<int> transmittedBeams;
    // The radiation named by the last NextRadiation; -1 before any.
    int currentRadiationId = -1;

    static int nextInterfaceId;
    static std::map<int, Interface*> interfaceList;
    static Lockable interfaceListLock;
};
