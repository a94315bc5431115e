#pragma once

#include <pthread.h>

#include <array>
#include <iosfwd>
#include <string>
#include <vector>

#include "framework/Lockable.h"
#include "framework/ParallelSelect.h"
#include "framework/SharedValue.h"
#include "framework/SimObject.h"
#include "geometry/CoordQUICK.h"

class BeamQUICK;
struct DocumentChange;
class EMRadiation;
class EMSource;
class GuiRender;
class Interface;
class OpticElement;
class SimulationData;
class SimulationDocument;
class SimulationResults;
class TestPoint;
class TestPointTask;
class Volume;

// The stages that a call of UpdateSim may run.
enum eEvalReq : int {
    evalReqNone = 0,
    evalReqRayTracing = 1,
    evalReqTraceVolumes = 2,
    evalReqFDTD = 3,
    evalReqTestPoints = 4,
    evalReqRendering = 5,
};

// Drives one simulation from its documents to its results. It owns the documents (the
// system's and the results' one), runs the stages of a trace in order, either on a run
// thread of its own or in the caller, reports progress and stops on request between
// stages. Everything a stage does lies in the classes it calls.
class SimEvaluation : public SimObject, public std::vector<SimulationDocument*> {
public:
    using Documents = std::vector<SimulationDocument*>;

    // One group of a tiling: the first index and the number of entries.
    struct TileGroup {
        int first;
        int count;
    };

    SimEvaluation();
    // Joins a run thread still going, after asking it to stop.
    ~SimEvaluation() override;

    // Starts a run of the requested stages: on a thread of its own when threaded (a thread
    // already running is left alone), otherwise before it returns. The selection decides
    // which stages may go parallel.
    bool UpdateStart(bool threaded, ParallelSelect& parallel);
    // True once the run has ended; joins the run thread at the first true answer.
    bool ProcessingComplete();
    // Raises the stop flag; the run ends at the next boundary between stages.
    bool StopProcessing();
    // 1.0 without a run thread, otherwise the shared progress.
    double GetProgress();
    static void SetProgress(double value);
    void UpdateReq(eEvalReq req, bool value);
    bool GetReq(eEvalReq req) const;
    void ResetReqUpdate();

    // Runs every requested stage under the process lock, then marks the run complete.
    bool UpdateSim();
    // The body of the run thread: UpdateSim on the SimEvaluation given. Returns null.
    static void* callUpdateSim(void* evaluation);

    bool UpdateRayTracing();
    bool UpdateTraceVolumes();
    // Without a field solver in the library, solver elements are reported and passed over.
    bool UpdateFDTD();
    bool UpdateTestPoints();
    // The display follows the results on its own: nothing to do for a run.
    bool UpdateRendering();

    // Puts each source into the volume that encloses it, found by the nearest interfaces on
    // both sides along the x axis; a source with no enclosing volume stays in the
    // surrounding one.
    bool AssignSourcesToVolumes();
    // Offers every beam to every test point, in tiles on workers where that is worth it.
    bool BeamsToTestPoints(std::vector<BeamQUICK*>& beams, std::vector<TestPoint*>& testPoints);
    // Splits count entries into min(count, 20) groups of count / groups entries; the last
    // group takes the remainder. Empty for count 0.
    static std::vector<TileGroup> TileGroups(int count);
    // The number of tasks a parallel catch of that many beams and points makes.
    static int TestPointTaskCount(int beams, int points);
    // Marks the rays of every path that reached a point.
    bool TraceBackTestPoints(std::vector<TestPoint*>& testPoints);
    // Forgets the results of the last run and the radiation every element received. A run
    // still going on its thread is waited for first.
    bool ClearEvaluated();

    // Moves to a time: objects on waylines move, and the stages of a run are requested.
    bool SetTime(double time);
    void SetPlaying(bool value);
    bool GetPlaying() const { return playing; }

    // The data of the current system; with make, a new document with one is made when
    // there is none.
    SimulationData* GetTopData(bool make);
    // The first top element of the current system's data, or null.
    OpticElement* GetSystem();
    // The object of that id in any of the documents, or null.
    SimObject* GetSimObject(int id);
    // A new system element from a preset: 13 a "Building", 14 an "urban city". It is placed
    // in the data of a new document, which becomes the current one. Null for another type.
    OpticElement* startNewSystem(int type);
    bool StartWirelessNetwork(int type);

    // The file names of the documents, directory and name joined by "/".
    bool GetFilenames(std::vector<std::string>& out);
    bool ContainsFile(const std::string& path);
    // A document for the file, read and turned into objects; false when it is held already
    // or cannot be read.
    bool AddFile(const std::string& path);
    bool RemoveFile(const std::string& path);
    bool RemoveAllFiles();
    // The document of that file, or null.
    SimulationDocument* GetSimDoc(const std::string& path);
    // Removes the documents that hold neither data nor results.
    bool ClearEmptySimDocs();
    bool SourceFilesToDocuments();
    bool DocumentsToSourceFiles();
    bool DocumentsToData();
    bool DataToDocuments();
    // Applies an edit to the document that holds the object; out is the object changed.
    bool ProcessDocumentChange(DocumentChange* change, SimObject** out);

    // Writes the results of the last run as CSV files into the directory of the
    // environment's HOMEPATH, else HOME, followed by "/Desktop".
    bool ExportSimResults();
    // That directory.
    static std::string ExportDirectory();
    // HOMEPATH, else HOME, else the current directory.
    static std::string HomeDirectory();

    int GetTraceLimit() const { return traceLimit; }
    void SetTraceLimit(int value) { traceLimit = value; }
    SimulationDocument* GetEvalDocument() const { return evalDocument; }
    SimulationResults* GetEvalResults() const { return evalResults; }
    void AddRenderer(GuiRender* renderer);
    bool IsStopped() { return stopProcessing.Get(); }
    // The passes of the repeat loop of the last trace.
    int GetTracePasses() const { return tracePasses; }

private:
    // The nearest interface hit along +x and along -x, or null for a side without one.
    struct SideHits {
        Interface* plus = nullptr;
        Interface* minus = nullptr;
    };

    // What ClearEvaluated forgets, on the thread of the run.
    void ClearEvaluatedResults();
    // Makes the document that takes the results, or empties its results.
    void PrepareEvalDocument();
    // One stage over every data item of every document; a stop ends the walk early. The
    // results are OR-ed.
    template <typename Stage>
    bool ForEachData(Stage stage);
    // The repeat loop of the trace: until no stage moves radiation any more.
    void TransmitUntilSettled();
    // The largest trace limit of any source.
    static int MaxSourceTraceLimit();
    // Collects the radiation of the loop into a results object of the document.
    void CollectResults();
    // Every beam of the results, in order.
    void GetBeams(SimulationResults* results, std::vector<BeamQUICK*>& beams);
    static void GetTestPoints(std::vector<TestPoint*>& points);
    // Whether the catch of that many beams and points goes to workers.
    static bool ParallelTestPoints(int beams, int points);
    static void BuildTask(TestPointTask* task, std::vector<BeamQUICK*>& beams,
                          const TileGroup& beamGroup, std::vector<TestPoint*>& points,
                          const TileGroup& pointGroup);
    void SetRenderersActive(bool value);
    // The source's position, through its global transformation.
    static CoordQUICK SourceOrigin(EMSource* source);
    static SideHits NearestSideHits(CoordQUICK origin, const std::vector<Interface*>& interfaces);
    // The volume other than the surrounding one that the nearest interfaces around the point
    // bound, or null.
    static Volume* EnclosingVolume(CoordQUICK origin, const std::vector<Interface*>& interfaces,
                                   Volume* surrounding);
    // A new document of the evaluation for that file.
    SimulationDocument* NewDocument(const std::string& name, const std::string& dir,
                                    const std::string& file);
    // Takes the document out of the evaluation and deletes it, with the pointers into it.
    void DropDocument(SimulationDocument* document);
    // Keeps the current data when a document still holds it; otherwise the first data of
    // any document, or null. Reloading a document replaces its data objects.
    void RefreshTopData();
    // The first results of any document, or null.
    SimulationResults* FirstResults();
    // Writes the all-rays file into the stream.
    void WriteAllRays(std::ostream& out);

    pthread_t* updateThread = nullptr;
    std::array<bool, 6> updateRequired{};
    std::vector<EMRadiation*> radiation;
    int traceLimit = 0;
    std::vector<GuiRender*> renderers;
    SimulationDocument* evalDocument = nullptr;
    SimulationResults* evalResults = nullptr;
    SimulationData* topData = nullptr;
    SharedValue stopProcessing{true};
    bool playing = false;
    int tracePasses = 0;

    static double calcProgress;
    static Lockable progressLock;
};
