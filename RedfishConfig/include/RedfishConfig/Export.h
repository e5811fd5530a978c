#pragma once

/**
 * @file
 * Marks what the shared library exports. Everything else in it is hidden.
 */

#if defined(__GNUC__)
#define REDFISHCONFIG_EXPORT __attribute__((visibility("default")))
#else
#define REDFISHCONFIG_EXPORT
#endif
