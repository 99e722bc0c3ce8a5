// The evaluators that a host could use instead, with the same expressions.
#include <muParser.h>

#include <map>
#include <memory>
#include <string>

#include "expr_cases.h"
#include "ratio_table.h"

extern "C" {
#include <lauxlib.h>
#include <lua.h>
#include <lualib.h>
}
#ifdef KORVANT_BENCH_MATHEVAL
extern "C" {
#include <matheval.h>
}
#endif
#ifdef KORVANT_BENCH_EXPRTK
#include <mrpt/expr/CRuntimeCompiledExpression.h>
#endif

using korvant_bench::ExprCase;
using korvant_bench::exprCases;
using korvant_bench::kExprNames;

namespace {

class MuParser {
  public:
    MuParser() {
        for (std::size_t i = 0; i < kExprNames.size(); ++i) {
            values_[i] = kExprNames[i].value;
            parser.DefineVar(kExprNames[i].name, &values_[i]);
        }
    }
    mu::Parser parser;

  private:
    double values_[kExprNames.size()];
};

void muparserAgain(benchmark::State& state, const ExprCase& each) {
    MuParser mine;
    mine.parser.SetExpr(each.muParser);
    checkValue(each, "muParser", mine.parser.Eval());
    for (auto _ : state) benchmark::DoNotOptimize(mine.parser.Eval());
}

void muparserFirst(benchmark::State& state, const ExprCase& each) {
    MuParser mine;
    const std::string text = each.muParser;
    for (auto _ : state) {
        mine.parser.SetExpr(text);
        benchmark::DoNotOptimize(mine.parser.Eval());
    }
}

void muparserFail(benchmark::State& state, const ExprCase& each) {
    MuParser mine;
    const std::string text = each.muParser + std::string("+missing");
    for (auto _ : state) {
        try {
            mine.parser.SetExpr(text);
            benchmark::DoNotOptimize(mine.parser.Eval());
            state.SkipWithError("an exception was expected");
        } catch (const mu::Parser::exception_type& error) {
            benchmark::DoNotOptimize(error.GetMsg().size());
        }
    }
}

class Lua {
  public:
    Lua() : state_(luaL_newstate()) {
        luaL_openlibs(get());
        run("sqrt=math.sqrt; sin=math.sin; exp=math.exp; log=math.log; min=math.min; max=math.max");
        for (const auto& [name, value] : kExprNames) {
            lua_pushnumber(get(), value);
            lua_setglobal(get(), name);
        }
    }
    lua_State* get() const { return state_.get(); }
    /// Leaves the function on the stack.
    void load(const std::string& text) {
        if (luaL_loadstring(get(), text.c_str()) != LUA_OK) std::abort();
    }
    double call() {
        if (lua_pcall(get(), 0, 1, 0) != LUA_OK) std::abort();
        const double value =
            lua_isboolean(get(), -1) ? lua_toboolean(get(), -1) : lua_tonumber(get(), -1);
        lua_pop(get(), 1);
        return value;
    }
    void run(const char* text) {
        load(text);
        call();
    }

  private:
    struct Close {
        void operator()(lua_State* state) const { lua_close(state); }
    };
    std::unique_ptr<lua_State, Close> state_;
};

void luaAgain(benchmark::State& state, const ExprCase& each) {
    Lua lua;
    lua.load(std::string("return ") + each.lua);
    lua_pushvalue(lua.get(), -1);
    checkValue(each, "Lua", lua.call());
    for (auto _ : state) {
        lua_pushvalue(lua.get(), -1);
        benchmark::DoNotOptimize(lua.call());
    }
}

void luaFirst(benchmark::State& state, const ExprCase& each) {
    Lua lua;
    const std::string text = std::string("return ") + each.lua;
    for (auto _ : state) {
        lua.load(text);
        benchmark::DoNotOptimize(lua.call());
    }
}

#ifdef KORVANT_BENCH_MATHEVAL
void mathevalAgain(benchmark::State& state, const ExprCase& each) {
    char* names[kExprNames.size()];
    double values[kExprNames.size()];
    for (std::size_t i = 0; i < kExprNames.size(); ++i) {
        names[i] = const_cast<char*>(kExprNames[i].name);
        values[i] = kExprNames[i].value;
    }
    std::string text = each.matheval;
    void* evaluator = evaluator_create(text.data());
    const int count = static_cast<int>(kExprNames.size());
    checkValue(each, "libmatheval", evaluator_evaluate(evaluator, count, names, values));
    for (auto _ : state)
        benchmark::DoNotOptimize(evaluator_evaluate(evaluator, count, names, values));
    evaluator_destroy(evaluator);
}
#endif

#ifdef KORVANT_BENCH_EXPRTK
std::string forExprtk(std::string text) {
    for (const auto& [from, to] :
         {std::pair{"&&", " and "}, std::pair{"||", " or "}, std::pair{"ln(", "log("}})
        for (std::size_t at; (at = text.find(from)) != std::string::npos;)
            text.replace(at, std::char_traits<char>::length(from), to);
    return text;
}

std::map<std::string, double> exprtkNames() {
    std::map<std::string, double> names;
    for (const auto& [name, value] : kExprNames) names[name] = value;
    return names;
}

void exprtkAgain(benchmark::State& state, const ExprCase& each) {
    mrpt::expr::CRuntimeCompiledExpression expression;
    expression.compile(forExprtk(each.muParser), exprtkNames());
    checkValue(each, "exprtk", expression.eval());
    for (auto _ : state) benchmark::DoNotOptimize(expression.eval());
}

void exprtkFirst(benchmark::State& state, const ExprCase& each) {
    const std::string text = forExprtk(each.muParser);
    const std::map<std::string, double> names = exprtkNames();
    for (auto _ : state) {
        mrpt::expr::CRuntimeCompiledExpression expression;
        expression.compile(text, names);
        benchmark::DoNotOptimize(expression.eval());
    }
}
#endif

const bool kRegistered = [] {
    const auto add = [](const std::string& name, auto function, const ExprCase& each) {
        benchmark::RegisterBenchmark((name + "/" + each.name).c_str(), function, each);
    };
    for (const ExprCase& each : exprCases()) {
        add("muparser_again", muparserAgain, each);
        add("muparser_first", muparserFirst, each);
        add("muparser_fail", muparserFail, each);
        add("lua_again", luaAgain, each);
        add("lua_first", luaFirst, each);
#ifdef KORVANT_BENCH_MATHEVAL
        if (each.matheval) add("matheval_again", mathevalAgain, each);
#endif
#ifdef KORVANT_BENCH_EXPRTK
        add("exprtk_again", exprtkAgain, each);
        add("exprtk_first", exprtkFirst, each);
#endif
    }
    return true;
}();

}  // namespace
