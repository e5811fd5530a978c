#pragma once

namespace RedfishConfigBench {

// Each registers its benchmarks, named "FIGURE against AGAINST/SYSTEM".

/** A manager is made and asked for the first time; against parsing the registry alone. Time, growth and memory. */
void RegisterColdFigures();

/** A manager that has been asked before is asked again, told another value, or asked for PATCH values. */
void RegisterWarmFigures();

/** Many systems of one model at a time. */
void RegisterManySystems();

} // namespace RedfishConfigBench
