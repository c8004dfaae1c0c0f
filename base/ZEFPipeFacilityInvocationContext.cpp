#include <ZEFPipeFacilityInvocationContext.h>

ZEFPipeFacilityInvocationContext::~ZEFPipeFacilityInvocationContext() = default;
