#pragma once

#include "runtime/VeldrinApi.h"

#include <cstdint>
#include <cstring>

// Two words that name an entity or a selection set to Lisp; what they hold is the host's.
using ads_name = std::int64_t[2];
using ads_point = double[3];
using ads_real = double;

// Kinds of values in a result buffer. Values below 5000 are group codes of entity data.
enum ResbufType : short {
    RTNONE = 5000,
    RTREAL = 5001,
    RTPOINT = 5002,
    RTSHORT = 5003,
    RTANG = 5004,
    RTSTR = 5005,
    RTENAME = 5006,
    RTPICKS = 5007,
    RTORINT = 5008,
    RT3DPOINT = 5009,
    RTLONG = 5010,
    RTVOID = 5014,
    RTLB = 5016,
    RTLE = 5017,
    RTDOTE = 5018,
    RTNIL = 5019,
    RTDXF0 = 5020,
    RTT = 5021,
    RTRESBUF = 5023,
};

// Results of host calls, and of a handler to the host.
enum ResbufStatus : int {
    RSRSLT = 1, // the handler has set its result
    RSERR = 3,  // the call failed
    RTNORM = 5100,
    RTERROR = -5001,
    RTCAN = -5002,
    RTREJ = -5003,
    RTFAIL = -5004,
    RTKWORD = -5005,
};

struct resbuf_binary {
    short clen;
    char* buf;
};

union ads_u_val {
    double rreal;
    double rpoint[3];
    short rint;
    char* rstring;
    std::int64_t rlname[2];
    std::int32_t rlong;
    std::int64_t rint64;
    resbuf_binary rbinary;
};

// One value of a chain: the form of all Lisp arguments and results and of exchange data. Whoever holds
// the head of a chain owns it and gives it back by acutRelRb.
struct resbuf {
    resbuf* rbnext;
    short restype;
    ads_u_val resval;
};

// A fresh item of the given type with a zero value and no successor.
VELDRIN_API resbuf* acutNewRb(int type);

// Frees a whole chain with its texts; null is allowed. Always RTNORM.
VELDRIN_API int acutRelRb(resbuf* head);

// Builds a chain from type and value pairs, up to a type of 0: RTREAL and RTANG take a double, RTSHORT
// and RTLONG an int, RTSTR a const char* (copied), RTPOINT, RT3DPOINT a const double*, RTENAME and
// RTPICKS a const std::int64_t*; RTLB, RTLE, RTDOTE, RTNIL, RTT, RTVOID, RTNONE take no value. Types below
// 1000 are group codes and take the value that their range says. Null when a type is unknown.
VELDRIN_API resbuf* acutBuildList(int type, ...);

// Copies a text into memory that acutRelRb or acdbFree gives back.
VELDRIN_API char* acutNewString(const char* text);
VELDRIN_API void acdbFree(void* memory);

// What a group code's value is stored as: RTSTR, RTREAL, RT3DPOINT, RTSHORT, RTLONG, RTENAME, or RTNONE.
VELDRIN_API short acutGroupCodeKind(int groupCode);
