#include "radiation/RayLayout.h"

#include "framework/NexoBase.h"
#include "framework/Parameter.h"
#include "geometry/Array.h"
#include "geometry/Coordinates.h"
#include "geometry/Transformation.h"
#include "geometry/triLink.h"
#include "logging/Log.h"
#include "radiation/Ray.h"
#include "radiation/TriRay.h"

namespace {

constexpr const char* TYPE = "RayLayout";
// The helper axis of the frame is swapped when it lies this close to the direction.
constexpr double HELPER_ANGLE_LIMIT = 0.1745;
// Below this many positions the rays are made in one piece; above, in tasks of 30.
constexpr size_t PARALLEL_THRESHOLD = 200;
constexpr size_t TASK_SIZE = 30;
// The length a ray starts with, until the trace finds where it ends.
constexpr double STUB_LENGTH = 0.0001;

// One share of the rays of a layout: the positions from begin to end, and everything a
// worker needs to turn them into rays without touching the layout. The transformation
// and direction are the task's own copies.
struct SetRaysTask : NexoBase::ContentBase {
    SetRaysTask(const std::vector<Coordinates*>& allPositions, size_t first, size_t last,
                const Transformation& placing, const Direction& axis)
        : positions(allPositions),
          begin(first),
          end(last),
          transformation(placing),
          direction(axis) {}

    const std::vector<Coordinates*>& positions;
    size_t begin;
    size_t end;
    double wavelength = -1.0;
    int traceLimit = -1;
    int reflectLimit = -1;
    int transmitLimit = -1;
    eParamValue type = PV_POINT;
    Transformation transformation;
    Direction direction;
    std::vector<Ray*> rays;
};

// Makes the rays of one task. A "point" position is a direction from the layout's
// origin; a "plane" position is a point that launches a ray along the layout's
// direction. The shared positions are only read, through quickGet, which never writes.
void* RaysFromLayout(void* content) {
    auto* task = static_cast<SetRaysTask*>(content);
    Coordinates origin(3);
    task->transformation.Transform(origin);
    Direction turned(3);
    Coordinates moved(3);
    const bool plane = task->type == PV_PLANE;
    task->rays.reserve(task->end - task->begin);
    for (size_t i = task->begin; i < task->end; ++i) {
        Coordinates* position = task->positions[i];
        const double x = position->quickGet(0);
        const double y = position->quickGet(1);
        const double z = position->quickGet(2);
        Ray* ray;
        if (plane) {
            moved.SetValues(x, y, z);
            task->transformation.Transform(moved);
            ray = new Ray(moved, task->direction, STUB_LENGTH);
        } else {
            turned.SetValues(x, y, z);
            task->transformation.Transform(turned);
            ray = new Ray(origin, turned, STUB_LENGTH);
        }
        ray->SetWavelength(task->wavelength);
        ray->SetTraceLimit(task->traceLimit);
        ray->SetReflectLimit(task->reflectLimit);
        ray->SetTransmitLimit(task->transmitLimit);
        task->rays.push_back(ray);
    }
    return nullptr;
}

bool SetRaysGoesParallel(size_t positions) {
    if (positions <= PARALLEL_THRESHOLD) return false;
    ParallelSelect& select = NexoBase::parallelSelected;
    return select.IsParallelForced(parallelSetRays) ||
           (select.IsParallelAvailable(parallelSetRays) && NexoBase::CanAddThreads());
}

}  // namespace

RayLayout::RayLayout() : side1(3), side2(3), up(3) { objTypeStr = TYPE; }

RayLayout::~RayLayout() = default;

bool RayLayout::Empty() {
    array = nullptr;
    point = nullptr;
    direction = nullptr;
    paramsChecked = false;
    return Component::Empty();
}

bool RayLayout::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    LoadPointerByType<Array>(&array, element, "Array");
    LoadPointerByName<Coordinates>(&point, element, "Point");
    LoadPointerByName<Direction>(&direction, element, "Direction");
    paramsChecked = false;
    return true;
}

bool RayLayout::InitializeDefault() {
    auto* shapeParameter = new Parameter();
    shapeParameter->Initialize();
    shapeParameter->setValue("Single");
    AddParameter(shapeParameter, false);
    shapeParameter->SetName("Shape");
    if (MakeChild(&point, "Point", 3)) point->SetValues(0.0, 0.0, 0.0);
    if (MakeChild(&direction, "Direction", 3)) direction->SetValues(0.0, 0.0, 1.0);
    return true;
}

bool RayLayout::Copy(RayLayout* other) {
    if (other == nullptr) {
        Log::log(1) << "RayLayout::Copy() - nothing to copy into " << objName << "\n";
        return false;
    }
    for (const auto& entry : *static_cast<ParameterMap*>(other)) {
        PassParameter(entry.first, other, this, entry.first);
    }
    auto* otherPoint = dynamic_cast<Coordinates*>(other->GetChildNamed("Point"));
    auto* otherDirection = dynamic_cast<Direction*>(other->GetChildNamed("Direction"));
    if (otherPoint != nullptr) {
        MakeChild(&point, "Point", 3);
        point->CopyTr(*otherPoint);
    }
    if (otherDirection != nullptr) {
        MakeChild(&direction, "Direction", 3);
        direction->CopyTr(*otherDirection);
    }
    paramsChecked = false;
    return true;
}

bool RayLayout::checkParams() {
    if (paramsChecked) return false;
    point = dynamic_cast<Coordinates*>(GetChildNamed("Point"));
    if (point == nullptr) {
        Log::log(1) << "point not found .. fail\n";
        return false;
    }
    direction = dynamic_cast<Direction*>(GetChildNamed("Direction"));
    if (direction == nullptr) {
        Log::log(1) << "Direction not found .. fail\n";
        return false;
    }
    BuildFrame();
    ReadParameter(PN_SIZ, size, sizeFound, -1.0);
    ReadParameter(PN_ANG, angle, angleFound, -1.0);
    ReadParameter(PN_CNT, count, countFound, -1.0);
    ReadParameter(PN_ARMS, armCount, armCountFound, -1.0);
    ReadParameter(PN_LMDA, wavelength, wavelengthFound, -1.0);
    ReadParameter(PN_TRLIM, traceLimit, traceLimitFound, -1);
    ReadParameter(PN_REFLIM, reflectLimit, reflectLimitFound, -1);
    ReadParameter(PN_TRANLIM, transmitLimit, transmitLimitFound, -1);
    ReadParameter(PN_TYP, type, typeFound, PV_EMPTY);
    ReadParameter(PN_ARRSHA, shape, shapeFound, PV_EMPTY);
    MakeArray();
    paramsChecked = true;
    return true;
}

// The angle test is in degrees against a bound that reads like radians, so the helper
// is swapped only when the direction is x almost exactly.
void RayLayout::BuildFrame() {
    Direction helper(1.0, 0.0, 0.0);
    if (direction->Angle(helper) < HELPER_ANGLE_LIMIT) helper.SetValues(0.0, 1.0, 0.0);
    up.SetCross(*direction, helper);
    side1.CopyTr(up);
    side2.SetCross(*direction, up);
}

template <typename T>
void RayLayout::ReadParameter(eParamName name, T& value, bool& found, T fallback) {
    value = fallback;
    found = GetParameterp(name) != nullptr;
    if (found) GetParameterValue<T>(name, value);
}

template <typename T>
void RayLayout::SetInArray(eParamName name, T value, bool found) {
    if (found) array->SetParameterValue(name, value);
}

void RayLayout::MakeArray() {
    if (array != nullptr) RemoveChild(array, true);
    array = nullptr;
    MakeChild(&array, "Array");
    SetInArray(PN_ARRTYP, type, typeFound);
    SetInArray(PN_ARRSHA, shape, shapeFound);
    SetInArray(PN_CNT, static_cast<int>(count), countFound);
    PassParameter(PN_RAYGAP, this, array, PN_RAYGAP);
    SetInArray(PN_ARMS, static_cast<int>(armCount), armCountFound);
    SetInArray(PN_SIZ, size, sizeFound);
    SetInArray(PN_ANG, angle, angleFound);
}

bool RayLayout::SetRays(std::vector<Ray*>& rays, int rayCount, std::vector<TriRay*>* triRays) {
    checkParams();
    if (array == nullptr) return false;
    std::vector<Coordinates*> positions;
    std::vector<triLink*> links;
    std::vector<double> solidAngles;
    if (!array->getPositions(positions, false, triRays != nullptr ? &links : nullptr, &solidAngles,
                             rayCount)) {
        return false;
    }
    MakeRays(positions, rays);
    if (triRays != nullptr) MakeTriRays(links, solidAngles, *triRays);
    return true;
}

bool RayLayout::SetInitialRays(std::vector<Ray*>& rays, std::vector<TriRay*>* triRays) {
    return SetRays(rays, -1, triRays);
}

bool RayLayout::SetTestRays(std::vector<Ray*>& rays) {
    double testCount = -1.0;
    GetParameterValue<double>(PN_TCNT, testCount);
    if (!(testCount > 0.0)) return false;
    return SetRays(rays, static_cast<int>(testCount), nullptr);
}

// A layout without a layout of its own stands where its parent puts it.
Transformation RayLayout::PlacingTransformation() {
    Transformation* placing = GetGlobalTransformation();
    if (placing == nullptr) placing = GetUpperTransformation();
    return placing != nullptr ? *placing : Transformation(3);
}

void RayLayout::MakeRays(const std::vector<Coordinates*>& positions, std::vector<Ray*>& rays) {
    Transformation placing = PlacingTransformation();
    Direction axis(*direction);
    placing.Transform(axis);

    const size_t total = positions.size();
    const bool parallel = SetRaysGoesParallel(total);
    const int taskCount = parallel ? static_cast<int>(total / TASK_SIZE) : 1;
    NexoBase::ProcessTask** tasks = NexoBase::NewTaskList(taskCount);
    for (int t = 0; t < taskCount; ++t) {
        const size_t begin = parallel ? t * TASK_SIZE : 0;
        const size_t end = t == taskCount - 1 ? total : begin + TASK_SIZE;
        auto* task = new SetRaysTask(positions, begin, end, placing, axis);
        task->wavelength = wavelength;
        task->traceLimit = traceLimit;
        task->reflectLimit = reflectLimit;
        task->transmitLimit = transmitLimit;
        task->type = type;
        tasks[t] = new NexoBase::ProcessTask(task, RaysFromLayout);
    }
    if (parallel) {
        NexoBase::ThreadedProcessTasks(tasks, taskCount);
    } else {
        RaysFromLayout(tasks[0]->content);
    }
    // Ids follow the positions, so the corner indices of the links are ray ids.
    rays.reserve(rays.size() + total);
    int id = 0;
    for (int t = 0; t < taskCount; ++t) {
        for (Ray* ray : static_cast<SetRaysTask*>(tasks[t]->content)->rays) {
            ray->SetBeamRayId(id++);
            rays.push_back(ray);
        }
    }
    NexoBase::DeleteTasks(tasks, taskCount);
}

void RayLayout::MakeTriRays(const std::vector<triLink*>& links,
                            const std::vector<double>& solidAngles, std::vector<TriRay*>& triRays) {
    const size_t first = triRays.size();
    triRays.reserve(first + links.size());
    double total = 0.0;
    for (size_t k = 0; k < links.size(); ++k) {
        auto* triangle = new TriRay(links[k]->a, links[k]->b, links[k]->c);
        triangle->solidAngle = k < solidAngles.size() ? solidAngles[k] : 0.0;
        total += triangle->solidAngle;
        triRays.push_back(triangle);
    }
    for (size_t k = first; k < triRays.size(); ++k) {
        triRays[k]->power = triRays[k]->solidAngle;
        triRays[k]->intensity = triRays[k]->solidAngle / total;
    }
}
