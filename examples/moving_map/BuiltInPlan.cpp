#include <moving_map/BuiltInPlan.h>

namespace MovingMap {

const char* const BuiltInPlan = R"(# From the coast around the gulf into the mountains, and back to the sea.
speed   240
station GULF  46.02 -30.78
station CREST 46.55 -31.38

start COAST 45.82 -30.92                         altitude 5000
arc   NORTH GULF 18 clockwise 330 course 300     altitude 14500
to    PASS  46.62 -31.10 flyover                 altitude 16000
cross RIDGE CREST 310 GULF 318                   altitude 15500
to    WEST  46.32 -31.76 flyover                 altitude 13000
turn  BACK  090 left                             altitude 12500
to    VALE  46.22 -31.32                         altitude 11000
to    PLAIN 45.85 -31.45                         altitude 6000
to    BAY   45.42 -31.75                         altitude 3000
to    ISLET 45.20 -31.30                         altitude 1500
)";

} // namespace MovingMap
