#include "support/script_storm.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "host/run/script_session.h"
#include "host/services/null_services.h"
#include "module/families.h"

namespace korvant::test {

namespace {

/// What a child has done, in memory that its parent sees.
struct Board {
    std::size_t next, built, finished;
    std::size_t unplaced[16], unplacedCount;
    bool broken;  ///< a good script did not build or run
};

constexpr char kGood[] =
    "class A { int v = 2; } int main() { A@ a = A(); string s = \"a\" + a.v; "
    "int[] n = {1, 2}; return n[1] - 2; }";

Limits limitsOfAStorm() {
    Limits limits = strictLimits();
    limits.callDepth = 200;
    limits.stringBytes = std::size_t{256} << 10;
    limits.runBytes = std::size_t{4} << 20;
    limits.hardCeilingMs = 150;
    return limits;
}

class Child {
  public:
    Child(Board& board, const StormOptions& options) : board_(board), options_(options) {
        session_.setServices({});
        session_.setLimits(limitsOfAStorm());
        begin();
    }
    ~Child() { end(); }

    void take(std::size_t index, const std::string& text) {
        if (tried_ != 0 && tried_ % options_.perEngine == 0) {
            end();
            begin();
        }
        ++tried_;
        ::alarm(options_.secondsForOne);
        attempt(index, text);
        if (tried_ % 10 == 0 && !goodRuns()) board_.broken = true;
    }

  private:
    void begin() {
        engine_ = asCreateScriptEngine();
        context_ = session_.configure(engine_, registrationOrder());
        if (context_ == nullptr) ::_exit(99);
    }
    void end() {
        session_.release(engine_);
        context_->Release();
        engine_->ShutDownAndRelease();
    }

    /// However busy the machine is.
    bool goodRuns() {
        Limits patient = limitsOfAStorm();
        patient.hardCeilingMs = 0;
        session_.setLimits(patient);
        const bool good = runs(kGood);
        session_.setLimits(limitsOfAStorm());
        return good;
    }

    bool runs(const std::string& text) {
        return !session_.runApplication(engine_, context_, text, nullptr).failed();
    }

    void attempt(std::size_t index, const std::string& text) {
        const bool ended = options_.run ? runs(text) : session_.compile(engine_, text) == 1;
        const bool built = ended || session_.lastFailure().kind != RunFailure::Kind::build;
        board_.built += built;
        board_.finished += ended;
        if (!built && !hasPlace() && board_.unplacedCount < std::size(board_.unplaced))
            board_.unplaced[board_.unplacedCount++] = index;
        session_.abandon(context_);
    }

    bool hasPlace() {
        for (const BuildMessage& message : session_.buildMessages().all())
            if (message.kind == BuildMessage::Kind::error && message.row > 0) return true;
        // A text in which nothing is declared has no place for that.
        for (const BuildMessage& message : session_.buildMessages().all())
            if (message.text.find("Nothing was built") != std::string::npos) return true;
        return false;
    }

    Board& board_;
    const StormOptions& options_;
    ScriptSession& session_ = moduleSession();
    asIScriptEngine* engine_ = nullptr;
    asIScriptContext* context_ = nullptr;
    std::size_t tried_ = 0;
};

class Storm {
  public:
    Storm(std::size_t count, const std::function<std::string(std::size_t)>& script,
          const StormOptions& options)
        : count_(count), script_(script), options_(options) {
        void* const memory = ::mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE,
                                    MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        board_ = static_cast<Board*>(memory);
    }
    ~Storm() { ::munmap(board_, sizeof(Board)); }
    Storm(const Storm&) = delete;
    Storm& operator=(const Storm&) = delete;

    StormResult run() {
        result_.scripts = count_;
        for (std::size_t at = 0; at < count_ && result_.findings.size() < 200;) at = batch(at);
        return std::move(result_);
    }

  private:
    /// From `begin` on in one child; returns where the next one goes on.
    std::size_t batch(std::size_t begin) {
        const std::size_t end = std::min(count_, begin + options_.perProcess);
        *board_ = {};
        board_->next = begin;
        const pid_t child = ::fork();
        if (child == 0) beChild(end);
        int status = 0;
        ::waitpid(child, &status, 0);
        result_.built += board_->built;
        result_.finished += board_->finished;
        for (std::size_t i = 0; i < board_->unplacedCount; ++i)
            note(board_->unplaced[i], "no message with a place");
        if (board_->broken) note(begin, "a good script fails behind one of these");
        if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return end;
        note(board_->next, WIFSIGNALED(status)
                               ? "signal " + std::to_string(WTERMSIG(status))
                               : "exit code " + std::to_string(WEXITSTATUS(status)));
        return board_->next + 1;
    }

    [[noreturn]] void beChild(std::size_t end) {
        {
            Child child(*board_, options_);
            for (; board_->next < end; ++board_->next)
                child.take(board_->next, script_(board_->next));
        }
        ::_exit(0);
    }

    void note(std::size_t index, std::string what) {
        result_.findings.push_back({index, std::move(what), script_(index)});
    }

    const std::size_t count_;
    const std::function<std::string(std::size_t)>& script_;
    const StormOptions& options_;
    Board* board_ = nullptr;
    StormResult result_;
};

std::size_t numberIn(const char* variable, std::size_t otherwise) {
    const char* const given = std::getenv(variable);
    return given ? std::strtoul(given, nullptr, 10) : otherwise;
}

}  // namespace

std::string StormResult::text() const {
    std::string all = std::to_string(scripts) + " scripts, " + std::to_string(built) + " built, " +
                      std::to_string(finished) + " ran to their end, " +
                      std::to_string(findings.size()) + " findings\n";
    for (const Finding& finding : findings)
        all += "---- " + std::to_string(finding.index) + ": " + finding.what + "\n" +
               finding.script + "\n";
    return all;
}

StormResult storm(std::size_t count, const std::function<std::string(std::size_t)>& script,
                  const StormOptions& options) {
    return Storm(count, script, options).run();
}

std::size_t stormCount(std::size_t usual) {
    return numberIn("KORVANT_STORM", usual);
}

std::vector<std::uint64_t> stormSeeds() {
    std::vector<std::uint64_t> seeds;
    for (std::uint64_t seed = 1; seed <= numberIn("KORVANT_STORM_SEEDS", 1); ++seed)
        seeds.push_back(seed);
    return seeds;
}

}  // namespace korvant::test
