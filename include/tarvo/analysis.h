/* tarvo/analysis.h: the documented analysis interface of the Tarvo API check
 * engine (libtarvo-api-check-engine.so).
 *
 * The host interface (tarvo/HostInterface.h) gives the platform's review
 * service one code and the finding lines, with fixed paths. This interface runs
 * the same engine for programs that want more: a database and a work directory
 * of their own, every undocumented call rather than the first, where each call
 * was found, what could not be examined, and the time per stage.
 *
 * Usage:
 *
 *   tarvo_options options;
 *   tarvo_options_init(&options);
 *   options.work_dir = "/var/tmp/review-42";   // extraction directories go here
 *   options.report_all = 1;
 *   tarvo_result* result = NULL;
 *   int32_t code = tarvo_analyse(&options, paths, path_count, &result);
 *   for (size_t i = 0; i < tarvo_finding_count(result); ++i) {
 *     const tarvo_finding* f = tarvo_finding_at(result, i);
 *     ...
 *   }
 *   tarvo_result_free(result);
 *
 * Analyses in separate processes with different work directories never touch
 * each other's files. One process runs one analysis at a time: the engine
 * changes the working directory while it extracts packages (it is restored
 * before tarvo_analyse returns) and keeps a process-wide time budget.
 * Log lines go to the process's Print_Log, as for the host interface, when the
 * program defines one.
 */
#ifndef TARVO_ANALYSIS_H
#define TARVO_ANALYSIS_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Result codes, as the host interface has them. */
#define TARVO_CLEAN 1000        /* no undocumented call found, everything examined */
#define TARVO_UNDOCUMENTED 1001 /* at least one undocumented call */
#define TARVO_REFUSED 1030      /* no finding, but part of the input was not examined in full */
/* Other codes are errors: 1010 and 1012 (the database), 1021 to 1027 (SWF work). */

typedef struct tarvo_options {
  /* The database of documented APIs; NULL: the product's fixed path
   * (/usr/share/lumeric/APIAnalEngineDB.xml). */
  const char* database_path;
  /* A directory of this analysis's own for its extraction directories
   * (WORK_DIR/0, WORK_DIR/1, ...; removed again when it ends). It must exist.
   * NULL: the product's /tmp/<n>. No result file is written either way. */
  const char* work_dir;
  /* 0 (exact): stop at the first undocumented call, as the host sees it, with
   * the same code and finding lines. 1: report every undocumented call, each
   * finding line once, in the order found. */
  int report_all;
  /* 1: also run the deep analysis, which parses the web sources (and reads
   * the SWF call statements) and follows how the scripts bind plug-in objects
   * through variables, properties, aliases and parameters; its findings are
   * added, marked deep. The exact findings and their order stay as they are.
   * An engine built without it adds a note of kind "deep" instead. */
  int deep;
} tarvo_options;

/* One undocumented call. Every string is owned by the result and ends with a
 * NUL byte; "" where something is not known. */
typedef struct tarvo_finding {
  const char* line;        /* the finding line, as the host sees it, "\n" included */
  const char* file;        /* the path given to tarvo_analyse that holds the call */
  const char* entry;       /* the path inside that package ("" for a plain file);
                              packages inside packages are joined with "!/" */
  uint32_t line_number;    /* 1-based; 0 for SWF files */
  const char* method;      /* the method called */
  const char* class_id;    /* the plug-in's class identifier, e.g. "MORVANE-NAVERTIX-PICTURE" */
  const char* variable;    /* the variable the call is made on, when the call names one */
  const char* origin;      /* "web" or "swf" */
  int deep;                /* 1 when found by the deep analysis only */
  const char* element_id;  /* deep findings: the plug-in element's id, where known */
  const char* binding;     /* deep findings: how the binding was found ("getElementById",
                              "jquery", "property", "alias", "parameter", ...) */
} tarvo_finding;

/* Something not examined in full. kind "refused" makes the code 1030 when
 * there is no finding; "unreadable" (a SWF file that cannot be read) and
 * "time budget" (SWF work cut by the engine's 20-second budget) leave the code
 * as it is, but a tool should not call such an application clean. */
typedef struct tarvo_note {
  const char* kind;
  const char* cause;
  const char* path; /* the path given, or PACKAGE!/ENTRY for what was inside a package */
} tarvo_note;

typedef struct tarvo_result tarvo_result;

/* Fills `options` with the defaults: the product's paths, exact mode. */
void tarvo_options_init(tarvo_options* options);

/* Analyses the application made of `paths` (files; zip packages among them
 * are expanded, nested ones too) and returns its code. `*result` receives a
 * result the caller frees with tarvo_result_free, also when the code is an
 * error. Returns -1 and sets `*result` to NULL when an argument is invalid
 * (NULL options, paths or result, a work directory that is not a directory) or memory runs out. */
int32_t tarvo_analyse(const tarvo_options* options, const char* const* paths, size_t count, tarvo_result** result);

/* The code the analysis returned. */
int32_t tarvo_result_code(const tarvo_result* result);

/* Findings in the order found; NULL for an index out of range. */
size_t tarvo_finding_count(const tarvo_result* result);
const tarvo_finding* tarvo_finding_at(const tarvo_result* result, size_t index);

/* Notes in the order recorded; NULL for an index out of range. */
size_t tarvo_note_count(const tarvo_result* result);
const tarvo_note* tarvo_note_at(const tarvo_result* result, size_t index);

/* Time spent per stage, in microseconds: "expansion", "database",
 * "first pass", "scan", "verdicts", "deep" (with the option), "clean-up"
 * (stages that did not run are missing). Returns the stage's name, NULL for an index out of range. */
size_t tarvo_stage_count(const tarvo_result* result);
const char* tarvo_stage_at(const tarvo_result* result, size_t index, uint64_t* micros);

/* Frees a result and everything it holds; NULL is allowed. */
void tarvo_result_free(tarvo_result* result);

/* The engine's version ("140808_QX_1.30") and the project's ("1.0.0"). */
const char* tarvo_engine_version(void);
const char* tarvo_version(void);

#ifdef __cplusplus
}
#endif

#endif /* TARVO_ANALYSIS_H */
