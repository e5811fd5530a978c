#pragma once

namespace RedfishConfigBench {

// Each registers its benchmarks, named "FIGURE against AGAINST/SYSTEM".

/** A manager is made and asked for the first time; against parsing the registry alone. Time, growth and memory. */
void RegisterColdFigures();

/** A manager that has been asked before is asked again, told another value, or asked for PATCH values. */
void RegisterWarmFigures();

/** Many systems of one model at a time. */
void RegisterManySystems();

/** The rule model is read, further systems are added to it, and all verdicts are asked for. */
void RegisterModelFigures();

/** What somebody may choose to be many: an item of many against one of few. */
void RegisterHostileFigures();

/** The command line tool as a whole process, against an older one that REDFISHCONFIG_BASELINE names. */
void RegisterWholeProcesses();

} // namespace RedfishConfigBench
