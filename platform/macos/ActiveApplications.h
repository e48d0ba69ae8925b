#pragma once

#include "platform/Workspace.h"

namespace kestrel {

// Visits the active ones of a list of applications by name. `nameOf` returns a C string, or null
// for an application without a name. This runs at each press of a console key, and a name costs a
// message to the launch services the first time, so only active applications are asked for it.
template <typename Applications, typename IsActive, typename NameOf>
void visitActive(const Applications& applications, const Workspace::Visitor& visit,
    const IsActive& isActive, const NameOf& nameOf)
{
    for (const auto application : applications) {
        if (!isActive(application))
            continue;
        const char* name = nameOf(application);
        if (!visit(name ? name : ""))
            return;
    }
}

} // namespace kestrel
