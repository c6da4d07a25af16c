// Logging through the host's Print_Log.
//
// The reference to Print_Log is weak: when the process that loads the library
// defines Print_Log (an executable linked with -rdynamic, or a host library
// loaded with RTLD_GLOBAL before the engine), every line reaches it with the
// format text and arguments unchanged; when nothing defines it, the engine logs
// nothing.
#pragma once

extern void Print_Log(const char* function, unsigned line, char* format, ...) __attribute__((weak));

namespace engine_log_detail {
// Never called: lets the compiler check each format against its arguments.
inline void checkFormat(const char*, ...) __attribute__((format(printf, 1, 2)));
inline void checkFormat(const char*, ...) {}
}  // namespace engine_log_detail

// ENGINE_LOG("FunctionName", "format", args...)
#define ENGINE_LOG(function, ...)                                            \
  do {                                                                       \
    if (false) engine_log_detail::checkFormat(__VA_ARGS__);                  \
    if (Print_Log) engine_log_call(Print_Log, function, __LINE__, __VA_ARGS__); \
  } while (0)

template <typename Sink, typename... Args>
inline void engine_log_call(Sink sink, const char* function, unsigned line, const char* format, Args... args) {
  sink(function, line, const_cast<char*>(format), args...);
}
