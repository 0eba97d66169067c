#include "tests/bench/reception/curve.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace bench {
namespace {

constexpr double kLeft = 70, kTop = 40, kWidth = 520, kHeight = 300;

// Where a value stands between the ends of its axis, 0 to 1.
double Place(double value, double from, double to, bool logarithmic) {
    if (logarithmic) value = std::log(std::max(value, 1e-12)), from = std::log(from), to = std::log(to);
    return std::clamp((value - from) / (to - from), 0.0, 1.0);
}

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.5g", value);
    return text;
}

std::string Words(double x, double y, const char* anchor, const std::string& words,
                  const std::string& more = "") {
    return "<text x=\"" + Number(x) + "\" y=\"" + Number(y) + "\" text-anchor=\"" + anchor + "\"" + more +
           ">" + words + "</text>\n";
}

std::string Line(double x1, double y1, double x2, double y2, const char* colour) {
    return "<line x1=\"" + Number(x1) + "\" y1=\"" + Number(y1) + "\" x2=\"" + Number(x2) + "\" y2=\"" +
           Number(y2) + "\" stroke=\"" + colour + "\"/>\n";
}

// The marks of an axis: steps, or decades with 2 and 5.
std::vector<double> Marks(double from, double to, double step, bool logarithmic) {
    std::vector<double> marks;
    if (!logarithmic) {
        for (double mark = from; mark <= to + step / 1000; mark += step) marks.push_back(mark);
        return marks;
    }
    for (double decade = std::pow(10, std::floor(std::log10(from))); decade <= to; decade *= 10) {
        for (const double part : {1.0, 2.0, 5.0}) {
            const double mark = decade * part;
            if (mark >= from * 0.999 && mark <= to * 1.001) marks.push_back(mark);
        }
    }
    return marks;
}

}  // namespace

std::string ToSvg(const Drawing& drawing) {
    const auto x = [&](double value) {
        return kLeft + kWidth * Place(value, drawing.left, drawing.right, drawing.logarithmicAcross);
    };
    const auto y = [&](double value) {
        return kTop + kHeight * (1 - Place(value, drawing.bottom, drawing.top, drawing.logarithmicUp));
    };
    std::string svg =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 640 410\" font-family=\"sans-serif\" "
        "font-size=\"12\">\n"
        "<rect width=\"640\" height=\"410\" fill=\"#ffffff\"/>\n";
    svg += Words(kLeft + kWidth / 2, 24, "middle", drawing.title, " font-size=\"15\"");
    for (const double mark :
         Marks(drawing.left, drawing.right, drawing.stepAcross, drawing.logarithmicAcross)) {
        svg += Line(x(mark), kTop, x(mark), kTop + kHeight, "#dddddd");
        svg += Words(x(mark), kTop + kHeight + 17, "middle", Number(mark));
    }
    for (const double mark : Marks(drawing.bottom, drawing.top, drawing.stepUp, drawing.logarithmicUp)) {
        svg += Line(kLeft, y(mark), kLeft + kWidth, y(mark), "#dddddd");
        svg += Words(kLeft - 7, y(mark) + 4, "end", Number(mark));
    }
    svg += Words(kLeft + kWidth / 2, kTop + kHeight + 40, "middle", drawing.across);
    svg += "<text transform=\"translate(18 " + Number(kTop + kHeight / 2) +
           ") rotate(-90)\" text-anchor=\"middle\">" + drawing.up + "</text>\n";
    double nameAt = kTop + 18;
    for (const Curve& curve : drawing.curves) {
        svg += "<polyline fill=\"none\" stroke-width=\"2\" stroke=\"" + curve.colour + "\" points=\"";
        for (const auto& [across, up] : curve.points) svg += Number(x(across)) + "," + Number(y(up)) + " ";
        svg += "\"/>\n";
        svg += Line(kLeft + kWidth - 170, nameAt - 4, kLeft + kWidth - 145, nameAt - 4, curve.colour.c_str());
        svg += Words(kLeft + kWidth - 138, nameAt, "start", curve.name);
        nameAt += 17;
    }
    return svg + "</svg>\n";
}

}  // namespace bench
