#pragma once

#include "AppNames.h"
#include "ExitCode.h"
#include "Output.h"
#include "app/PatchBody.h"
#include "app/System.h"

#include <vector>

namespace RedfishConfigTool {

/** Adds an accepted change to the body. One that cannot be written as JSON becomes a refusal. */
void AddToBody(Answer& answer, PatchBody& body);

/**
 * Writes what came of changes: the body, or under --json {"body": ..., "refused": [...]} with null for no body.
 *
 * @param withBody whether the body is wanted; it is not written where it may not be shown
 */
ExitCode WriteChanges(const PatchBody& body, bool withBody, const std::vector<Answer>& answers, const System& system,
                      Output& output);

} // namespace RedfishConfigTool
