#include <moving_map/BuiltInPlan.h>

namespace MovingMap {

const char* const BuiltInPlan = R"(# From the coast around the gulf into the mountains, and back to the sea.
speed   240
station GULF  46.02 -30.78 vortac
station CREST 46.55 -31.38 vor
station HAVEN 45.30 -31.62 ndb
station MAST  45.93 -31.28 obstacle

start COAST 45.82 -30.92 airport                 altitude 5000
arc   NORTH GULF 18 clockwise 330 course 300     altitude 14500
to    PASS  46.62 -31.10 flyover                 altitude 16000
cross RIDGE CREST 310 GULF 318                   altitude 15500
to    WEST  46.32 -31.76 flyover                 altitude 13000
turn  BACK  090 left                             altitude 12500
to    VALE  46.22 -31.32                         altitude 11000
to    PLAIN 45.85 -31.45                         altitude 6000
to    BAY   45.42 -31.75                         altitude 3000
to    ISLET 45.20 -31.30 airport                 altitude 1500

airspace COAST-CTR D ground 4500
circle   45.82 -30.92 7

airspace GULF-TMA C 4500 FL195
curve    45.82 -30.92 18 clockwise 230 10
corner   46.16 -30.60
corner   45.70 -30.55

airspace SUMMITS restricted ground FL180
corner   46.78 -31.06
corner   46.70 -30.74
corner   46.48 -30.66
corner   46.50 -30.92
corner   46.64 -30.98

airspace QUARRY danger ground 6000
corner   46.04 -31.72
corner   46.10 -31.52
corner   45.94 -31.50
corner   45.92 -31.66

airspace ISLET-CTR D ground 2500
circle   45.20 -31.30 6
)";

} // namespace MovingMap
