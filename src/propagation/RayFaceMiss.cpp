#include "propagation/RayFaceMiss.h"

#include "framework/SimObject.h"
#include "propagation/Interface.h"

Interface* RayFaceMiss::ResolveFace(int ownerId) {
    return dynamic_cast<Interface*>(SimObject::GetObjectGlobally(ownerId));
}
