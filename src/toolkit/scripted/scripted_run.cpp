#include "toolkit/scripted/scripted_run.h"

#include "toolkit/scripted/scripted_backend.h"

#include <csignal>
#include <cstdlib>
#include <exception>
#include <memory>
#include <utility>

namespace keldrin {

namespace {

/// The backend of the process. It stays to the end, because the program ends by exit().
struct ScriptedRun {
    std::unique_ptr<ScriptedBackend> backend;
};

ScriptedRun &scriptedRun() {
    static ScriptedRun run;
    return run;
}

void report(std::ostream &complaints, const std::string &path, const ScriptFault &fault) {
    complaints << path;
    if (fault.line > 0) {
        complaints << ':' << fault.line;
    }
    complaints << ": " << fault.reason << '\n';
}

extern "C" void endByCrash(int /*signal*/) {
    std::_Exit(ScriptNoProgress);
}

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KELDRIN_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define KELDRIN_ADDRESS_SANITIZER
#endif

// A crash ends with an exit code of its own. Under a sanitizer its report comes first.
void catchCrashes() {
#ifndef KELDRIN_ADDRESS_SANITIZER
    std::set_terminate([] { std::_Exit(ScriptNoProgress); });
    for (const int signal : {SIGSEGV, SIGABRT, SIGFPE, SIGILL}) {
        std::signal(signal, endByCrash);
    }
#endif
}

} // namespace

int startScriptedRun(const std::string &scenarioPath, std::vector<std::string> arguments,
                     std::ostream &transcript, std::ostream &complaints, const MakeScripted &make) {
    Script script;
    const std::vector<ScriptFault> faults = readScript(scenarioPath, script);
    if (!faults.empty()) {
        for (const ScriptFault &fault : faults) {
            report(complaints, scenarioPath, fault);
        }
        complaints << std::flush;
        return ScriptUnreadable;
    }
    catchCrashes();
    scriptedRun().backend = make ? make(std::move(script), transcript)
                                 : std::make_unique<ScriptedBackend>(std::move(script), transcript);
    ToolkitInit(*scriptedRun().backend, std::move(arguments));
    return 0;
}

} // namespace keldrin
