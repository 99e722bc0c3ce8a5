// The module's use of its console: the record, the lazy set-up, showing and hiding.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/run/run_participant.h"
#include "host/services/console.h"

namespace korvant {

/// What the module knows of its console.
struct ConsoleRecord {
    bool attached = false;        ///< the streams lead to the console
    ConsoleInfo info;             ///< as it was when the module allocated it
    std::uint32_t lastError = 0;  ///< of the last allocation or release; 0 after success
};

/// Told of what scripts print to the console, on the script's thread.
class PrintListener {
  public:
    virtual ~PrintListener() = default;
    /// True when the console is not to show these bytes. Asked before printed().
    virtual bool takes(std::string_view) { return false; }
    virtual void printed(std::string_view bytes) = 0;
};

/// The one console of the module over the console of the session's services. Script's thread only.
class ScriptConsole final : public RunParticipant {
  public:
    /// The lazy set-up: allocates and sets the console up once in a configuration, then shows it.
    void ensure();
    void show();
    /// Hands over what was printed and hides the window; for the end of a run. Also when the
    /// console was never used.
    void hide();
    /// Blanks everything, cursor to 0,0; nothing when no console is allocated.
    void clear();
    /// Gives the console back; false and the error is recorded when that failed.
    bool release();

    /// Prints after the lazy set-up. A failed write is noted with the session.
    void write(std::string_view bytes);
    /// Hands over what was printed, before anything else is shown or asked.
    void flush();
    /// `listener`, which must live until removeListener(), hears of every write.
    void addListener(PrintListener& listener) { listeners_.push_back(&listener); }
    void removeListener(PrintListener& listener) { std::erase(listeners_, &listener); }
    bool allocated() const;
    /// For the time while another console stands in the session's services: what is known of the
    /// own one is kept as it is until takeUp(). They do not nest.
    void setAside();
    void takeUp();
    const ConsoleRecord& record() const noexcept { return use_.record; }

    /// 0 when no console is allocated.
    std::uint16_t attributes();
    /// Nothing when no console is allocated; the same holds for moveCursor.
    void setAttributes(std::uint16_t attributes);
    void moveCursor(std::int16_t column, std::int16_t row);

    void beginConfiguration() override { use_.ready = aside_.ready = false; }
    /// What stands there stays when a run begins, where it is more than the script's.
    void keepText(bool keeps) noexcept { keepsText_ = keeps; }

    void beginRun() override;
    void beforeReport() override { hide(); }
    void endContinuation() override { hide(); }
    void endRun() override { hide(); }

  private:
    static Console& current();
    bool taken(std::string_view bytes) const;
    void allocate();
    void setUp();
    void noteFailure(bool written);

    struct Use {
        ConsoleRecord record;
        Console* allocated = nullptr;  ///< the console that was allocated; null for none
        bool ready = false;            ///< set up in this configuration
    };

    Use use_;
    Use aside_;
    std::vector<PrintListener*> listeners_;
    bool visible_ = false;
    bool keepsText_ = false;
};

/// The one of the module. Never destroyed.
ScriptConsole& scriptConsole();

}  // namespace korvant
