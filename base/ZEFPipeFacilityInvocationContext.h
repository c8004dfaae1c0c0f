#pragma once

#include <ZEFPIPEExport.h>

//! An opaque handle of one pending client request. A service derives its own request from it.
class ZEFPIPE_EXPORT ZEFPipeFacilityInvocationContext {
public:
    virtual ~ZEFPipeFacilityInvocationContext();
};
