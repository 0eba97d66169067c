// A drawing of curves, as SVG.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace bench {

struct Curve {
    std::string name;
    std::string colour;
    std::vector<std::pair<double, double>> points;
};

struct Drawing {
    std::string title;
    std::string across;  // what the axes are, with their units
    std::string up;
    double left, right;  // the ends of the axes
    double bottom, top;
    double stepAcross, stepUp;
    bool logarithmicAcross = false;
    bool logarithmicUp = false;
    std::vector<Curve> curves;
};

// The drawing as a whole file.
std::string ToSvg(const Drawing& drawing);

}  // namespace bench
