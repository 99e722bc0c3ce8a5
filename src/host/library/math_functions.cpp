#include "host/library/math_functions.h"

#include <cmath>

#include "host/engine/native_call.h"
#include "host/run/script_session.h"

namespace korvant {

namespace {

double arcCosine(double x) {
    return std::acos(x);
}
double arcSine(double x) {
    return std::asin(x);
}
double arcTangent(double x) {
    return std::atan(x);
}
double arcTangent2(double y, double x) {
    return std::atan2(y, x);
}
double ceiling(double x) {
    return std::ceil(x);
}
double cosine(double x) {
    return std::cos(x);
}
double hyperbolicCosine(double x) {
    return std::cosh(x);
}
double exponential(double x) {
    return std::exp(x);
}
double absolute(double x) {
    return std::fabs(x);
}
double floorOf(double x) {
    return std::floor(x);
}
double remainderOf(double x, double y) {
    return std::fmod(x, y);
}
double logarithm(double x) {
    return std::log(x);
}
double logarithm10(double x) {
    return std::log10(x);
}
double power(double x, double y) {
    return std::pow(x, y);
}
double sine(double x) {
    return std::sin(x);
}
double hyperbolicSine(double x) {
    return std::sinh(x);
}
double squareRoot(double x) {
    return std::sqrt(x);
}
double tangent(double x) {
    return std::tan(x);
}
double hyperbolicTangent(double x) {
    return std::tanh(x);
}
double hypotenuse(double x, double y) {
    return std::hypot(x, y);
}
double besselJ0(double x) {
    return ::j0(x);
}
double besselJ1(double x) {
    return ::j1(x);
}
double besselY0(double x) {
    return ::y0(x);
}
double besselY1(double x) {
    return ::y1(x);
}

double scriptJn(std::int32_t order, double x) {
    return besselJn(order, x, runShouldStop);
}
double scriptYn(std::int32_t order, double x) {
    return besselYn(order, x, runShouldStop);
}

const FunctionRow kMathRows[] = {
    functionRow<arcCosine>("double acos(double)", "Arc cosine, in radians.",
                           "double x = acos(1.0);  // 0"),
    functionRow<arcSine>("double asin(double)", "Arc sine, in radians.",
                         "double x = asin(0.5);  // 0.523599"),
    functionRow<arcTangent>("double atan(double)", "Arc tangent, in radians.",
                            "double x = atan(1.0);  // 0.785398"),
    functionRow<arcTangent2>("double atan2(double, double)",
                             "Arc tangent of y/x in the right quadrant; y comes first.",
                             "double x = atan2(1, 0);  // 1.5708"),
    functionRow<ceiling>("double ceil(double)", "The smallest whole number not below.",
                         "double x = ceil(1.2);  // 2"),
    functionRow<cosine>("double cos(double)", "Cosine of an angle in radians.",
                        "double x = cos(0);  // 1"),
    functionRow<hyperbolicCosine>("double cosh(double)", "Hyperbolic cosine.",
                                  "double x = cosh(0);  // 1"),
    functionRow<exponential>("double exp(double)", "e to a power.",
                             "double x = exp(1);  // 2.71828"),
    functionRow<absolute>("double fabs(double)", "The value without its sign.",
                          "double x = fabs(-2);  // 2"),
    functionRow<floorOf>("double floor(double)", "The largest whole number not above.",
                         "double x = floor(1.8);  // 1"),
    functionRow<remainderOf>("double fmod(double, double)",
                             "The remainder of a division, with the sign of the first.",
                             "double x = fmod(7, 4);  // 3"),
    functionRow<logarithm>("double log(double)", "Natural logarithm.",
                           "double x = log(exp(2));  // 2"),
    functionRow<logarithm10>("double log10(double)", "Logarithm to the base 10.",
                             "double x = log10(1000);  // 3"),
    functionRow<power>("double pow(double, double)", "The first to the power of the second.",
                       "double x = pow(2, 10);  // 1024"),
    functionRow<sine>("double sin(double)", "Sine of an angle in radians.",
                      "double x = sin(0);  // 0"),
    functionRow<hyperbolicSine>("double sinh(double)", "Hyperbolic sine.",
                                "double x = sinh(0);  // 0"),
    functionRow<squareRoot>("double sqrt(double)", "Square root.",
                            "double x = sqrt(2);  // 1.41421"),
    functionRow<tangent>("double tan(double)", "Tangent of an angle in radians.",
                         "double x = tan(0);  // 0"),
    functionRow<hyperbolicTangent>("double tanh(double)", "Hyperbolic tangent.",
                                   "double x = tanh(0);  // 0"),
    functionRow<hypotenuse>("double hypot(double, double)", "The root of the sum of the squares.",
                            "double x = hypot(3, 4);  // 5"),
    functionRow<besselJ0>("double j0(double)", "Bessel function of the first kind, order 0.",
                          "double x = j0(0);  // 1"),
    functionRow<besselJ1>("double j1(double)", "Bessel function of the first kind, order 1.",
                          "double x = j1(1);  // 0.440051"),
    functionRow<scriptJn>("double jn(int, double)",
                          "Bessel function of the first kind; the order comes first.",
                          "double x = jn(2, 1);  // 0.114903"),
    functionRow<besselY0>("double y0(double)", "Bessel function of the second kind, order 0.",
                          "double x = y0(1);  // 0.088257"),
    functionRow<besselY1>("double y1(double)", "Bessel function of the second kind, order 1.",
                          "double x = y1(1);  // -0.781213"),
    functionRow<scriptYn>("double yn(int, double)",
                          "Bessel function of the second kind; the order comes first.",
                          "double x = yn(2, 1);  // -1.65068"),
};

}  // namespace

int registerMathFunctions(asIScriptEngine* engine) {
    return registerGlobalFunctions(engine, kMathRows);
}

std::span<const FunctionRow> mathFunctionRows() {
    return kMathRows;
}

}  // namespace korvant
