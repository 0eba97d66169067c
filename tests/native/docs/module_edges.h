// The edges of the handset's modules, as their sources spell them: what is called from outside a module, and
// whether it can let a C++ exception out (handset/base/module_edge.h).
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace test {

// The text of each file of one module, by its name.
using ModuleSources = std::map<std::string, std::string>;

struct ModuleEdges {
    // Of the module's exports, those that have code in it; the others are forwarded by the .def file and have
    // none. Methods of COM objects, and procedures that the host calls.
    std::set<std::string> exports, methods, procedures;
    // What can let an exception out, or is exported and not found.
    std::vector<std::string> complaints;
};

// The exports of a .def file that have code behind them, by the names of their functions.
std::set<std::string> SuppliedBy(const std::string& def);

// An edge is an export, a method that a class declares with STDMETHODCALLTYPE, and every function defined
// with a calling convention of the system (WINAPI, WINAPIV, CALLBACK, STDAPI). It lets nothing out when its
// body is a function-try-block whose handler answers by handset::Edge…, or when it calls nothing but
// functions that let nothing out themselves. Destructors throw nothing, by the language.
ModuleEdges EdgesOf(const std::string& def, const ModuleSources& sources);

// Where a source starts a thread otherwise than by WorkerThread, or by CreateThread with a procedure of the
// module: the lines.
std::vector<std::string> UnguardedThreads(const std::string& source, bool hasProcedures);

}  // namespace test
