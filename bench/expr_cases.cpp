#include "expr_cases.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace korvant_bench {

const std::array<ExprName, 13> kExprNames = {{{"a", 6},
                                              {"b", 7},
                                              {"c", 8},
                                              {"d", 9},
                                              {"h", 10},
                                              {"f", 11},
                                              {"g", 12},
                                              {"depth", 27},
                                              {"width", 210},
                                              {"height", 297},
                                              {"margin", 12.5},
                                              {"rate", 0.25},
                                              {"mode", 6}}};

namespace {

enum { A, B, C, D, H, F, G, Depth, Width, Height, Margin, Rate, Mode };

double byMode(const double* v) {
    for (int mode = 1; mode <= 8; ++mode)
        if (v[Mode] == mode) return mode * 10;
    return 0;
}

double byDepth(const double* v) {
    return v[Depth] < 10 ? 1 : v[Depth] < 20 ? 2 : v[Depth] < 30 ? 3 : v[Depth] < 40 ? 4 : 5;
}

}  // namespace

const std::vector<ExprCase>& exprCases() {
    static const std::vector<ExprCase> cases = {
        {"positive", "width>0", "width>0", "width>0", nullptr,
         [](const double* v) -> double { return v[Width] > 0; }},
        {"range", "depth>=3&&depth<40", "depth>=3&&depth<40", "depth>=3 and depth<40", nullptr,
         [](const double* v) -> double { return v[Depth] >= 3 && v[Depth] < 40; }},
        {"conditions", "(mode==1||mode==6)&&rate<>0", "(mode==1||mode==6)&&rate!=0",
         "(mode==1 or mode==6) and rate~=0", nullptr,
         [](const double* v) -> double { return (v[Mode] == 1 || v[Mode] == 6) && v[Rate] != 0; }},
        {"products", "a*b+c*d-h*f/g", "a*b+c*d-h*f/g", "a*b+c*d-h*f/g", "a*b+c*d-h*f/g",
         [](const double* v) { return v[A] * v[B] + v[C] * v[D] - v[H] * v[F] / v[G]; }},
        {"area", "(width+2*margin)*(height+2*margin)-width*height",
         "(width+2*margin)*(height+2*margin)-width*height",
         "(width+2*margin)*(height+2*margin)-width*height",
         "(width+2*margin)*(height+2*margin)-width*height",
         [](const double* v) {
             return (v[Width] + 2 * v[Margin]) * (v[Height] + 2 * v[Margin]) - v[Width] * v[Height];
         }},
        {"sum", "a+b*c-d*2.5+h/4-f*g+1.25", "a+b*c-d*2.5+h/4-f*g+1.25", "a+b*c-d*2.5+h/4-f*g+1.25",
         "a+b*c-d*2.5+h/4-f*g+1.25",
         [](const double* v) {
             return v[A] + v[B] * v[C] - v[D] * 2.5 + v[H] / 4 - v[F] * v[G] + 1.25;
         }},
        {"length", "sqrt(a^2+b^2)", "sqrt(a^2+b^2)", "sqrt(a^2+b^2)", "sqrt(a^2+b^2)",
         [](const double* v) { return std::sqrt(std::pow(v[A], 2) + std::pow(v[B], 2)); }},
        {"decay", "sin(a)*exp(0-b)+log(c)", "sin(a)*exp(0-b)+ln(c)", "sin(a)*exp(0-b)+log(c)",
         "sin(a)*exp(0-b)+log(c)",
         [](const double* v) { return std::sin(v[A]) * std::exp(0 - v[B]) + std::log(v[C]); }},
        {"limits", "min(a;b;c)*max(d;h)", "min(a,b,c)*max(d,h)", "min(a,b,c)*max(d,h)", nullptr,
         [](const double* v) {
             return std::min({v[A], v[B], v[C]}) * std::max(v[D], v[H]);
         }},
        {"choice", "if(rate>0;depth/rate;0)", "rate>0 ? depth/rate : 0",
         "rate>0 and depth/rate or 0", nullptr,
         [](const double* v) { return v[Rate] > 0 ? v[Depth] / v[Rate] : 0; }},
        {"cases",
         "cat(10;mode==1;20;mode==2;30;mode==3;40;mode==4;50;mode==5;60;mode==6;70;mode==7;80;mode="
         "=8;"
         "0)",
         "mode==1 ? 10 : (mode==2 ? 20 : (mode==3 ? 30 : (mode==4 ? 40 : (mode==5 ? 50 : (mode==6 "
         "? "
         "60 : (mode==7 ? 70 : (mode==8 ? 80 : 0)))))))",
         "mode==1 and 10 or mode==2 and 20 or mode==3 and 30 or mode==4 and 40 or mode==5 and 50 "
         "or "
         "mode==6 and 60 or mode==7 and 70 or mode==8 and 80 or 0",
         nullptr, byMode},
        {"steps", "ind(depth;1;10;2;20;3;30;4;40;5)",
         "depth<10 ? 1 : (depth<20 ? 2 : (depth<30 ? 3 : (depth<40 ? 4 : 5)))",
         "depth<10 and 1 or depth<20 and 2 or depth<30 and 3 or depth<40 and 4 or 5", nullptr,
         byDepth},
    };
    return cases;
}

void checkValue(const ExprCase& each, const char* who, double value) {
    double values[13];
    for (std::size_t i = 0; i < kExprNames.size(); ++i) values[i] = kExprNames[i].value;
    const double expected = each.byHand(values);
    if (std::fabs(value - expected) <= 1e-12 * std::fabs(expected)) return;
    std::fprintf(stderr, "%s gives %.17g for \"%s\", by hand it is %.17g\n", who, value, each.text,
                 expected);
    std::exit(1);
}

}  // namespace korvant_bench
