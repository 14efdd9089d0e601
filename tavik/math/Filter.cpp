#include <tavik/math/Filter.h>

#include <algorithm>

namespace Tavik::Math::Filter {

double pt1(double input, double timeConstant, double dt, double* state)
{
    const double step = std::min(dt, 1.0);
    const double weight = step + timeConstant;
    if (weight != 0.0) {
        *state = (input * step + *state * timeConstant) / weight;
    }
    return *state;
}

} // namespace Tavik::Math::Filter
