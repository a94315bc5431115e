#include "control/SimEvaluation.h"

#include <algorithm>
#include <limits>

#include "control/GuiRender.h"
#include "control/OpticElement.h"
#include "control/TestPointTask.h"
#include "documents/SimulationData.h"
#include "documents/SimulationDocument.h"
#include "documents/SimulationResults.h"
#include "framework/NexoBase.h"
#include "geometry/Transformation.h"
#include "logging/Log.h"
#include "propagation/Interface.h"
#include "propagation/Volume.h"
#include "radiation/BeamQUICK.h"
#include "radiation/EMRadiation.h"
#include "radiation/EMSource.h"
#include "radiation/TestPoint.h"

namespace {

// Held while a run's UpdateSim is under way; two runs of one process queue on it.
Lockable processMutex;

// Beams and points are split into at most this many groups each for the parallel catch.
constexpr int TILE_GROUPS_MAX = 20;
// A hit closer than this to the source is the source's own surface, not a wall around it.
constexpr double MIN_HIT_DISTANCE = 1e-10;

}  // namespace

double SimEvaluation::calcProgress = 1.0;
Lockable SimEvaluation::progressLock;

SimEvaluation::SimEvaluation() { objTypeStr = "SimEvaluation"; }

SimEvaluation::~SimEvaluation() {
    if (updateThread != nullptr) {
        StopProcessing();
        NexoBase::ThreadClose(&updateThread);
    }
}

bool SimEvaluation::UpdateStart(bool threaded, ParallelSelect& parallel) {
    stopProcessing.Set(false);
    NexoBase::parallelSelected = parallel;
    SetProgress(0.0);
    if (!threaded) {
        UpdateSim();
        return true;
    }
    if (updateThread == nullptr) {
        updateThread = NexoBase::ThreadFunction(callUpdateSim, this);
        SetRenderersActive(true);
    }
    return true;
}

bool SimEvaluation::ProcessingComplete() {
    if (GetProgress() < 1.0) return false;
    if (updateThread == nullptr) return true;
    // Progress reaches 1.0 a moment before the run lets go of the process lock.
    if (processMutex.isLocked()) return false;
    NexoBase::ThreadClose(&updateThread);
    SetRenderersActive(false);
    return true;
}

bool SimEvaluation::StopProcessing() {
    stopProcessing.Set(true);
    return true;
}

double SimEvaluation::GetProgress() {
    if (updateThread == nullptr) return 1.0;
    progressLock.lock(true);
    const double progress = calcProgress;
    progressLock.unlock();
    return progress;
}

void SimEvaluation::SetProgress(double value) {
    progressLock.lock(true);
    calcProgress = value;
    progressLock.unlock();
}

void SimEvaluation::UpdateReq(eEvalReq req, bool value) {
    if (req < 0 || req >= static_cast<int>(updateRequired.size())) {
        Log::log(1) << "SimEvaluation::UpdateReq() - no such request " << static_cast<int>(req)
                    << "\n";
        return;
    }
    updateRequired[req] = value;
}

bool SimEvaluation::GetReq(eEvalReq req) const {
    return req >= 0 && req < static_cast<int>(updateRequired.size()) && updateRequired[req];
}

void SimEvaluation::ResetReqUpdate() { updateRequired.fill(false); }

bool SimEvaluation::UpdateSim() {
    Log::log(4) << "SimEvaluation::UpdateSim() - begin\n";
    processMutex.lock(true);
    if (GetReq(evalReqRayTracing) && !stopProcessing.Get()) UpdateRayTracing();
    if (GetReq(evalReqTraceVolumes) && !stopProcessing.Get()) UpdateTraceVolumes();
    if (GetReq(evalReqFDTD) && !stopProcessing.Get()) UpdateFDTD();
    // Ray tracing always brings the test points up to date.
    if ((GetReq(evalReqTestPoints) || GetReq(evalReqRayTracing)) && !stopProcessing.Get()) {
        UpdateTestPoints();
    }
    if (GetReq(evalReqRendering) && !stopProcessing.Get()) UpdateRendering();
    // A stopped run ends here as well, so that it reads as complete.
    SetProgress(1.0);
    ResetReqUpdate();
    processMutex.unlock();
    Log::log(4) << "SimEvaluation::UpdateSim() - end\n";
    return true;
}

void* SimEvaluation::callUpdateSim(void* evaluation) {
    static_cast<SimEvaluation*>(evaluation)->UpdateSim();
    return nullptr;
}

template <typename Stage>
bool SimEvaluation::ForEachData(Stage stage) {
    bool result = false;
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        for (SimulationData* data : static_cast<std::vector<SimulationData*>&>(*document)) {
            if (stopProcessing.Get()) return result;
            result = stage(data) || result;
        }
    }
    return result;
}

bool SimEvaluation::UpdateRayTracing() {
    NexoBase::statusLog_p.ClearLog();
    NexoBase::errorLog_p.ClearLog();
    ClearEvaluatedResults();
    if (topData == nullptr) return true;
    PrepareEvalDocument();
    ApplyTransformation(true);
    AssignSourcesToVolumes();
    ForEachData([](SimulationData* data) { return data->ResetDetection(); });
    ForEachData([](SimulationData* data) {
        const bool armed = data->InitialTransmit(true);
        return data->TransmitSourceToVolume() || armed;
    });
    traceLimit = MaxSourceTraceLimit();
    TransmitUntilSettled();
    CollectResults();
    return true;
}

void SimEvaluation::PrepareEvalDocument() {
    if (evalDocument != nullptr) {
        static_cast<std::vector<SimulationResults*>&>(*evalDocument).clear();
        return;
    }
    evalDocument = new SimulationDocument();
    evalDocument->SetName("new results");
    evalDocument->SetFileDir(HomeDirectory());
    evalDocument->SetFileName("newRes1.xml");
    push_back(evalDocument);
    evalDocument->Initialize();
    AddChild(evalDocument);
}

int SimEvaluation::MaxSourceTraceLimit() {
    int largest = 0;
    for (EMSource* source : EMSource::GetSourceList()) {
        int limit = 0;
        if (source->GetParameterValue(PN_TRLIM, limit)) largest = std::max(largest, limit);
    }
    return largest;
}

void SimEvaluation::TransmitUntilSettled() {
    double pass = 0.0;
    bool changed = false;
    tracePasses = 0;
    Volume* surrounding = Volume::GetVolumeFromId(OpticElement::resources.GetDefaultVolumeId());
    do {
        // A rough indication only: the loop does not count against the trace limit.
        SetProgress(traceLimit > 0 ? pass / traceLimit * 0.5 : 0.0);
        pass += 0.5;
        tracePasses++;
        changed =
            ForEachData([](SimulationData* data) { return data->TransmitInterfaceToVolume(); });
        changed = ForEachData([this](SimulationData* data) {
                      return data->TransmitVolumeToInterface(&radiation);
                  }) ||
                  changed;
        if (!stopProcessing.Get() && surrounding != nullptr) {
            changed = surrounding->TransmitRadiation(&radiation) || changed;
        }
    } while (changed && !stopProcessing.Get());
}

void SimEvaluation::CollectResults() {
    evalResults = new SimulationResults();
    static_cast<std::vector<SimulationResults*>&>(*evalDocument).push_back(evalResults);
    evalResults->Initialize();
    evalDocument->AddChild(evalResults);
    evalResults->SetName("evaluated data");
    long rayCount = 0;
    auto& collected = static_cast<std::vector<EMRadiation*>&>(*evalResults);
    for (EMRadiation* radp : radiation) {
        // A volume reports its radiation at every pass that moved it; parallel passes
        // gather into vectors of their own, so the same radiation can come more than once.
        if (std::find(collected.begin(), collected.end(), radp) != collected.end()) continue;
        Log::log(4) << "radp->GetBeamRaysCount() = " << radp->GetBeamRaysCount() << "\n";
        rayCount += radp->GetRayCount();
        collected.push_back(radp);
        // Listed under the results for saving, while the volume that received it keeps it.
        SimObject* owner = radp->GetParent();
        evalResults->AddChild(radp);
        radp->SetParent(owner);
    }
    Log::log(4) << "rayCount = " << rayCount << "\n";
    Log::log(4) << "evalData->std::vector<EMRadiation*>::size() = " << collected.size() << "\n";
    radiation.clear();
}

bool SimEvaluation::UpdateTraceVolumes() { return true; }

bool SimEvaluation::UpdateFDTD() {
    OpticElement* system = GetSystem();
    if (system == nullptr) return true;
    const auto& solvers = static_cast<std::vector<FDTDWrapper*>&>(*system);
    if (!solvers.empty()) {
        Log::log(2) << "SimEvaluation::UpdateFDTD() - no field solver available, " << solvers.size()
                    << " solver elements left as they are\n";
    }
    return true;
}

bool SimEvaluation::UpdateTestPoints() {
    if (evalResults == nullptr) return true;
    std::vector<BeamQUICK*> beams;
    GetBeams(evalResults, beams);
    std::vector<TestPoint*> points;
    GetTestPoints(points);
    BeamsToTestPoints(beams, points);
    return TraceBackTestPoints(points);
}

bool SimEvaluation::UpdateRendering() { return true; }

void SimEvaluation::GetBeams(SimulationResults* results, std::vector<BeamQUICK*>& beams) {
    for (EMRadiation* radp : static_cast<std::vector<EMRadiation*>&>(*results)) {
        for (int id : radp->GetBeamIds()) {
            BeamQUICK* beam = GETBEAM(id);
            if (beam != nullptr) beams.push_back(beam);
        }
    }
}

void SimEvaluation::GetTestPoints(std::vector<TestPoint*>& points) {
    points = TestPoint::GetTestPointList();
}

bool SimEvaluation::AssignSourcesToVolumes() {
    Volume* surrounding = Volume::GetVolumeFromId(OpticElement::resources.GetDefaultVolumeId());
    const std::vector<Interface*> interfaces = Interface::GetInterfaceList();
    for (EMSource* source : EMSource::GetSourceList()) {
        source->SetVolume(surrounding);
        Volume* inner = EnclosingVolume(SourceOrigin(source), interfaces, surrounding);
        if (inner != nullptr) source->SetVolume(inner);
    }
    return true;
}

CoordQUICK SimEvaluation::SourceOrigin(EMSource* source) {
    double x = 0.0, y = 0.0, z = 0.0;
    Transformation* placing = source->GetGlobalTransformation();
    if (placing != nullptr) placing->Transform(x, y, z);
    return CoordQUICK(x, y, z);
}

SimEvaluation::SideHits SimEvaluation::NearestSideHits(CoordQUICK origin,
                                                       const std::vector<Interface*>& interfaces) {
    SideHits hits;
    double bestPlus = std::numeric_limits<double>::max();
    double bestMinus = std::numeric_limits<double>::max();
    for (Interface* face : interfaces) {
        face->waitForUnlock();
        face->lock(true);
        DirQUICK plus(1.0, 0.0, 0.0);
        DirQUICK minus(-1.0, 0.0, 0.0);
        const double toPlus = face->TestHitDistance(origin, plus, nullptr, -1.0);
        const double toMinus = face->TestHitDistance(origin, minus, nullptr, -1.0);
        face->unlock();
        if (toPlus > MIN_HIT_DISTANCE && toPlus < bestPlus) {
            bestPlus = toPlus;
            hits.plus = face;
        }
        if (toMinus > MIN_HIT_DISTANCE && toMinus < bestMinus) {
            bestMinus = toMinus;
            hits.minus = face;
        }
    }
    return hits;
}

Volume* SimEvaluation::EnclosingVolume(CoordQUICK origin, const std::vector<Interface*>& interfaces,
                                       Volume* surrounding) {
    const SideHits hits = NearestSideHits(origin, interfaces);
    // Each volume of the interface that is set and not the surrounding one; the later wins.
    auto ownVolume = [surrounding](Interface* face) {
        Volume* found = nullptr;
        for (int id : {face->GetVolumeA(), face->GetVolumeB()}) {
            Volume* volume = Volume::GetVolumeFromId(id);
            if (volume != nullptr && volume != surrounding) found = volume;
        }
        return found;
    };
    if (hits.plus == nullptr && hits.minus == nullptr) return nullptr;
    if (hits.plus == nullptr || hits.plus == hits.minus) return ownVolume(hits.minus);
    if (hits.minus == nullptr) return ownVolume(hits.plus);
    // Walls on both sides: the volume that both of them bound.
    Volume* found = nullptr;
    for (int a : {hits.plus->GetVolumeA(), hits.plus->GetVolumeB()}) {
        for (int b : {hits.minus->GetVolumeA(), hits.minus->GetVolumeB()}) {
            Volume* volume = Volume::GetVolumeFromId(a);
            if (a == b && volume != nullptr && volume != surrounding) found = volume;
        }
    }
    return found;
}

std::vector<SimEvaluation::TileGroup> SimEvaluation::TileGroups(int count) {
    std::vector<TileGroup> groups;
    if (count <= 0) return groups;
    const int groupCount = std::min(count, TILE_GROUPS_MAX);
    const int size = count / groupCount;
    for (int g = 0; g < groupCount; g++) {
        const int first = g * size;
        groups.push_back({first, g == groupCount - 1 ? count - first : size});
    }
    return groups;
}

int SimEvaluation::TestPointTaskCount(int beams, int points) {
    return static_cast<int>(TileGroups(beams).size() * TileGroups(points).size());
}

bool SimEvaluation::ParallelTestPoints(int beams, int points) {
    const bool worthIt = beams > 2 || points > 2;
    ParallelSelect& select = NexoBase::parallelSelected;
    if (select.IsParallelForced(parallelBeamsToTestPoints) && worthIt) return true;
    return worthIt && select.IsParallelAvailable(parallelBeamsToTestPoints) &&
           NexoBase::CanAddThreads();
}

void SimEvaluation::BuildTask(TestPointTask* task, std::vector<BeamQUICK*>& beams,
                              const TileGroup& beamGroup, std::vector<TestPoint*>& points,
                              const TileGroup& pointGroup) {
    task->beamLimitPairs.reserve(beamGroup.count);
    for (int b = beamGroup.first; b < beamGroup.first + beamGroup.count; b++) {
        task->beamLimitPairs.emplace_back(beams[b]);
    }
    task->testPoints.assign(points.begin() + pointGroup.first,
                            points.begin() + pointGroup.first + pointGroup.count);
}

bool SimEvaluation::BeamsToTestPoints(std::vector<BeamQUICK*>& beams,
                                      std::vector<TestPoint*>& testPoints) {
    const int beamCount = static_cast<int>(beams.size());
    const int pointCount = static_cast<int>(testPoints.size());
    if (beamCount == 0 || pointCount == 0) return true;
    if (!ParallelTestPoints(beamCount, pointCount)) {
        TestPointTask task;
        BuildTask(&task, beams, {0, beamCount}, testPoints, {0, pointCount});
        BeamToTestPointTask(&task);
        return true;
    }
    const std::vector<TileGroup> beamGroups = TileGroups(beamCount);
    const std::vector<TileGroup> pointGroups = TileGroups(pointCount);
    const int count = TestPointTaskCount(beamCount, pointCount);
    NexoBase::ProcessTask** tasks = NexoBase::NewTaskList(count);
    int next = 0;
    for (const TileGroup& beamGroup : beamGroups) {
        for (const TileGroup& pointGroup : pointGroups) {
            auto* task = new TestPointTask();
            BuildTask(task, beams, beamGroup, testPoints, pointGroup);
            tasks[next++] = new NexoBase::ProcessTask(task, BeamToTestPointTask);
        }
    }
    NexoBase::ThreadedProcessTasks(tasks, count);
    NexoBase::DeleteTasks(tasks, count);
    return true;
}

bool SimEvaluation::TraceBackTestPoints(std::vector<TestPoint*>& testPoints) {
    for (TestPoint* point : testPoints) point->tracebackRaySuccess();
    return true;
}

bool SimEvaluation::ClearEvaluated() {
    // The results belong to the run until it has ended.
    if (updateThread != nullptr) {
        NexoBase::ThreadClose(&updateThread);
        SetRenderersActive(false);
    }
    ClearEvaluatedResults();
    return true;
}

void SimEvaluation::ClearEvaluatedResults() {
    if (evalResults != nullptr) {
        SimObject* holder = evalResults->GetParent();
        if (holder == nullptr || !holder->RemoveChild(evalResults, true)) delete evalResults;
        evalResults = nullptr;
    }
    for (SimulationDocument* document : static_cast<Documents&>(*this)) {
        static_cast<std::vector<SimulationResults*>&>(*document).clear();
        document->RemoveChildrenType("SimulationResults", true);
        for (SimulationData* data : static_cast<std::vector<SimulationData*>&>(*document)) {
            data->ClearReceivedRadiation();
        }
    }
    Volume* surrounding = Volume::GetVolumeFromId(OpticElement::resources.GetDefaultVolumeId());
    if (surrounding != nullptr) surrounding->ClearReceivedRadiation();
    radiation.clear();
}

bool SimEvaluation::SetTime(double time) {
    SimObject::SetTime(time);
    OpticElement* system = GetSystem();
    if (system != nullptr) system->UpdateMoveOnWayline(time);
    for (eEvalReq req :
         {evalReqRayTracing, evalReqTraceVolumes, evalReqTestPoints, evalReqRendering}) {
        UpdateReq(req, true);
    }
    return true;
}

void SimEvaluation::SetPlaying(bool value) { playing = value; }

void SimEvaluation::AddRenderer(GuiRender* renderer) {
    if (renderer != nullptr) renderers.push_back(renderer);
}

void SimEvaluation::SetRenderersActive(bool value) {
    for (GuiRender* renderer : renderers) renderer->active = value;
}
