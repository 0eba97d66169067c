// Curves are where their figures are.
#include "tests/bench/reception/curve.h"

#include <gmock/gmock.h>

namespace {

using bench::Drawing;
using testing::HasSubstr;
using testing::Not;

// The plain is from 70 to 590 across, and from 340 up to 40.
std::string Points(const Drawing& drawing) {
    const std::string svg = bench::ToSvg(drawing);
    const std::size_t at = svg.find("points=\"") + 8;
    return svg.substr(at, svg.find('"', at) - at);
}

Drawing Square() {
    return {"Title", "across", "up", 0, 10, 0, 100, 5, 50, false, false, {}};
}

TEST(BenchCurve, PointsStandAtTheirPlaceBetweenTheEndsOfTheAxes) {
    Drawing drawing = Square();
    drawing.curves = {{"one", "#123456", {{0, 0}, {5, 25}, {10, 100}}}};
    EXPECT_EQ(Points(drawing), "70,340 330,265 590,40 ");
}

TEST(BenchCurve, ALogarithmicAxisHasEqualStepsForEqualRatios) {
    Drawing drawing = Square();
    drawing.bottom = 0.01;
    drawing.logarithmicUp = true;
    drawing.curves = {{"one", "#123456", {{0, 0.01}, {5, 1}, {10, 100}}}};
    EXPECT_EQ(Points(drawing), "70,340 330,190 590,40 ");
    drawing = Square();
    drawing.left = 10, drawing.right = 1000;
    drawing.logarithmicAcross = true;
    drawing.curves = {{"one", "#123456", {{100, 50}}}};
    EXPECT_EQ(Points(drawing), "330,190 ");
}

TEST(BenchCurve, WhatIsBeyondAnAxisIsDrawnOnItsEdge) {
    Drawing drawing = Square();
    drawing.curves = {{"one", "#123456", {{-1, -5}, {11, 500}}}};
    EXPECT_EQ(Points(drawing), "70,340 590,40 ");
    drawing.bottom = 0.01;
    drawing.logarithmicUp = true;
    drawing.curves = {{"none", "#123456", {{0, 0}}}};
    EXPECT_EQ(Points(drawing), "70,340 ");
}

TEST(BenchCurve, MarksCarryTheirFiguresAndCurvesTheirNames) {
    Drawing drawing = Square();
    drawing.curves = {{"one", "#123456", {{0, 0}}}, {"other", "#654321", {{0, 0}}}};
    const std::string svg = bench::ToSvg(drawing);
    EXPECT_THAT(svg, HasSubstr("x=\"330\" y=\"357\" text-anchor=\"middle\">5</text>"));
    EXPECT_THAT(svg, HasSubstr("y=\"194\" text-anchor=\"end\">50</text>"));
    EXPECT_THAT(svg, HasSubstr(">one</text>"));
    EXPECT_THAT(svg, HasSubstr(">other</text>"));
    EXPECT_LT(svg.find("#123456"), svg.find(">one<"));
    EXPECT_LT(svg.find(">one<"), svg.find("#654321"));
    EXPECT_THAT(svg, Not(HasSubstr("nan")));
}

}  // namespace
