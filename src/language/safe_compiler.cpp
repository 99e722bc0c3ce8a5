#include "language/safe_compiler.h"

#include "host/engine/engine_build.h"
#include "host/run/script_session.h"
#include "language/api_description.h"
#include "language/text_document.h"

namespace korvant {

namespace {

constexpr char kFatal[] = "The compiler does not survive this";
constexpr char kTooLong[] = "compile took too long";

CompileWorker::Setup ownEngine(CompileWorker::Setup setup) {
    setup.libraryFolder.clear();
    return setup;
}

}  // namespace

CompileWorker::Setup workerSetup(asIScriptEngine& engine) {
    CompileWorker::Setup setup;
    setup.api = apiToJson(describeEngine(engine));
    setup.limits = moduleSession().limits();
    if (!engineIsHardened(engine)) setup.libraryFolder = engineLibraryFolder(engine);
    return setup;
}

SafeCompiler::SafeCompiler(const CompileWorker::Setup& setup) : worker_(setup) {
    if (!setup.libraryFolder.empty()) hardened_ = std::make_unique<CompileWorker>(ownEngine(setup));
}

SafeCompiler::Outcome SafeCompiler::build(const std::string& text) {
    CompileWorker::Outcome outcome = worker_.buildTwice(text);
    switch (outcome.end) {
        case CompileWorker::End::answered:
            return {true, outcome.build == BuildEnd::built,
                    outcome.build == BuildEnd::endedByLimits, std::move(outcome.messages)};
        case CompileWorker::End::died:
            return explain(text);
        case CompileWorker::End::tooLong: {
            Outcome late{true, false, true, {}};
            late.messages.add(kTooLong, 0, 0, BuildMessage::Kind::error);
            return late;
        }
        default:
            return {};
    }
}

SafeCompiler::Outcome SafeCompiler::explain(const std::string& text) {
    if (hardened_ != nullptr) {
        CompileWorker::Outcome outcome = hardened_->buildTwice(text);
        const bool answered = outcome.end == CompileWorker::End::answered;
        if (answered && outcome.build != BuildEnd::built && hardened_->hardened())
            return {true, false, true, std::move(outcome.messages)};
    }
    const std::size_t place = fatalPlace(text, [this](const std::string& part) {
        return worker_.build(part).end == CompileWorker::End::died;
    });
    const TextPosition at = TextDocument(text).positionOf(place);
    Outcome fatal{true, false, true, {}};
    fatal.messages.add(kFatal, static_cast<std::int32_t>(at.line + 1),
                       static_cast<std::int32_t>(at.column + 1), BuildMessage::Kind::error);
    return fatal;
}

}  // namespace korvant
