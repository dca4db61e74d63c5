#include "examples/modelgen/cppReserved.h"

#include <iterator>
#include <unordered_set>

namespace modelgen {

namespace {

// clang-format off

// Keywords, words that mean something in some places, and macros of common systems.
constexpr std::string_view keywords[] = {
    "alignas", "alignof", "and", "and_eq", "asm", "assert", "auto", "bitand", "bitor", "bool", "break",
    "case", "catch", "char", "char16_t", "char32_t", "char8_t", "class", "co_await", "co_return",
    "co_yield", "compl", "concept", "const", "const_cast", "consteval", "constexpr", "constinit",
    "continue", "decltype", "default", "delete", "do", "double", "dynamic_cast", "else", "enum", "explicit",
    "export", "extern", "false", "final", "float", "for", "friend", "goto", "i386", "if", "inline", "int",
    "linux", "long", "major", "makedev", "minor", "mutable", "namespace", "new", "noexcept", "not",
    "not_eq", "nullptr", "operator", "or", "or_eq", "override", "private", "protected", "public",
    "register", "reinterpret_cast", "requires", "return", "short", "signed", "sizeof", "static",
    "static_assert", "static_cast", "std", "struct", "switch", "template", "this", "thread_local", "throw",
    "true", "try", "typedef", "typeid", "typename", "union", "unix", "unsigned", "using", "virtual", "void",
    "volatile", "wchar_t", "while", "xor", "xor_eq",
};

// Macros that the standard headers of the generated code bring along, on both targets.
constexpr std::string_view macros[] = {
    "ATOMIC_BOOL_LOCK_FREE", "ATOMIC_CHAR16_T_LOCK_FREE", "ATOMIC_CHAR32_T_LOCK_FREE",
    "ATOMIC_CHAR_LOCK_FREE", "ATOMIC_FLAG_INIT", "ATOMIC_INT_LOCK_FREE", "ATOMIC_LLONG_LOCK_FREE",
    "ATOMIC_LONG_LOCK_FREE", "ATOMIC_POINTER_LOCK_FREE", "ATOMIC_SHORT_LOCK_FREE", "ATOMIC_VAR_INIT",
    "ATOMIC_WCHAR_T_LOCK_FREE", "BIG_ENDIAN", "BUFSIZ", "BYTE_ORDER", "CHAR_BIT", "CHAR_MAX", "CHAR_MIN",
    "CLK_TCK", "CLOCKS_PER_SEC", "CLOCK_BOOTTIME", "CLOCK_BOOTTIME_ALARM", "CLOCK_MONOTONIC",
    "CLOCK_MONOTONIC_COARSE", "CLOCK_MONOTONIC_RAW", "CLOCK_PROCESS_CPUTIME_ID", "CLOCK_REALTIME",
    "CLOCK_REALTIME_ALARM", "CLOCK_REALTIME_COARSE", "CLOCK_TAI", "CLOCK_THREAD_CPUTIME_ID", "CSIGNAL",
    "DUMMYSTRUCTNAME", "DUMMYSTRUCTNAME1", "DUMMYSTRUCTNAME2", "DUMMYSTRUCTNAME3", "DUMMYSTRUCTNAME4",
    "DUMMYSTRUCTNAME5", "DUMMYUNIONNAME", "DUMMYUNIONNAME1", "DUMMYUNIONNAME2", "DUMMYUNIONNAME3",
    "DUMMYUNIONNAME4", "DUMMYUNIONNAME5", "DUMMYUNIONNAME6", "DUMMYUNIONNAME7", "DUMMYUNIONNAME8",
    "DUMMYUNIONNAME9", "E2BIG", "EACCES", "EADDRINUSE", "EADDRNOTAVAIL", "EADV", "EAFNOSUPPORT", "EAGAIN",
    "EALREADY", "EBADE", "EBADF", "EBADFD", "EBADMSG", "EBADR", "EBADRQC", "EBADSLT", "EBFONT", "EBUSY",
    "ECANCELED", "ECHILD", "ECHRNG", "ECOMM", "ECONNABORTED", "ECONNREFUSED", "ECONNRESET", "EDEADLK",
    "EDEADLOCK", "EDESTADDRREQ", "EDOM", "EDOTDOT", "EDQUOT", "EEXIST", "EFAULT", "EFBIG", "EHOSTDOWN",
    "EHOSTUNREACH", "EHWPOISON", "EIDRM", "EILSEQ", "EINPROGRESS", "EINTR", "EINVAL", "EIO", "EISCONN",
    "EISDIR", "EISNAM", "EKEYEXPIRED", "EKEYREJECTED", "EKEYREVOKED", "EL2HLT", "EL2NSYNC", "EL3HLT",
    "EL3RST", "ELIBACC", "ELIBBAD", "ELIBEXEC", "ELIBMAX", "ELIBSCN", "ELNRNG", "ELOOP", "EMEDIUMTYPE",
    "EMFILE", "EMLINK", "EMSGSIZE", "EMULTIHOP", "ENAMETOOLONG", "ENAVAIL", "ENETDOWN", "ENETRESET",
    "ENETUNREACH", "ENFILE", "ENOANO", "ENOBUFS", "ENOCSI", "ENODATA", "ENODEV", "ENOENT", "ENOEXEC",
    "ENOFILE", "ENOKEY", "ENOLCK", "ENOLINK", "ENOMEDIUM", "ENOMEM", "ENOMSG", "ENONET", "ENOPKG",
    "ENOPROTOOPT", "ENOSPC", "ENOSR", "ENOSTR", "ENOSYS", "ENOTBLK", "ENOTCONN", "ENOTDIR", "ENOTEMPTY",
    "ENOTNAM", "ENOTRECOVERABLE", "ENOTSOCK", "ENOTSUP", "ENOTTY", "ENOTUNIQ", "ENXIO", "EOF", "EOPNOTSUPP",
    "EOVERFLOW", "EOWNERDEAD", "EPERM", "EPFNOSUPPORT", "EPIPE", "EPROTO", "EPROTONOSUPPORT", "EPROTOTYPE",
    "ERANGE", "EREMCHG", "EREMOTE", "EREMOTEIO", "ERESTART", "ERFKILL", "EROFS", "ESHUTDOWN",
    "ESOCKTNOSUPPORT", "ESPIPE", "ESRCH", "ESRMNT", "ESTALE", "ESTRPIPE", "ETIME", "ETIMEDOUT",
    "ETOOMANYREFS", "ETXTBSY", "EUCLEAN", "EUNATCH", "EUSERS", "EWOULDBLOCK", "EXDEV", "EXFULL",
    "EXIT_FAILURE", "EXIT_SUCCESS", "FD_CLR", "FD_ISSET", "FD_SET", "FD_SETSIZE", "FD_ZERO", "FILENAME_MAX",
    "FOPEN_MAX", "GENERIC_ERRORCHECK_INITIALIZER", "GENERIC_INITIALIZER", "GENERIC_NORMAL_INITIALIZER",
    "GENERIC_RECURSIVE_INITIALIZER", "INT16_C", "INT16_MAX", "INT16_MIN", "INT16_WIDTH", "INT32_C",
    "INT32_MAX", "INT32_MIN", "INT32_WIDTH", "INT64_C", "INT64_MAX", "INT64_MIN", "INT64_WIDTH", "INT8_C",
    "INT8_MAX", "INT8_MIN", "INT8_WIDTH", "INTMAX_C", "INTMAX_MAX", "INTMAX_MIN", "INTMAX_WIDTH",
    "INTPTR_MAX", "INTPTR_MIN", "INTPTR_WIDTH", "INT_FAST16_MAX", "INT_FAST16_MIN", "INT_FAST16_WIDTH",
    "INT_FAST32_MAX", "INT_FAST32_MIN", "INT_FAST32_WIDTH", "INT_FAST64_MAX", "INT_FAST64_MIN",
    "INT_FAST64_WIDTH", "INT_FAST8_MAX", "INT_FAST8_MIN", "INT_FAST8_WIDTH", "INT_LEAST16_MAX",
    "INT_LEAST16_MIN", "INT_LEAST16_WIDTH", "INT_LEAST32_MAX", "INT_LEAST32_MIN", "INT_LEAST32_WIDTH",
    "INT_LEAST64_MAX", "INT_LEAST64_MIN", "INT_LEAST64_WIDTH", "INT_LEAST8_MAX", "INT_LEAST8_MIN",
    "INT_LEAST8_WIDTH", "INT_MAX", "INT_MIN", "LC_ADDRESS", "LC_ADDRESS_MASK", "LC_ALL", "LC_ALL_MASK",
    "LC_COLLATE", "LC_COLLATE_MASK", "LC_CTYPE", "LC_CTYPE_MASK", "LC_GLOBAL_LOCALE", "LC_IDENTIFICATION",
    "LC_IDENTIFICATION_MASK", "LC_MAX", "LC_MEASUREMENT", "LC_MEASUREMENT_MASK", "LC_MESSAGES",
    "LC_MESSAGES_MASK", "LC_MIN", "LC_MONETARY", "LC_MONETARY_MASK", "LC_NAME", "LC_NAME_MASK",
    "LC_NUMERIC", "LC_NUMERIC_MASK", "LC_PAPER", "LC_PAPER_MASK", "LC_TELEPHONE", "LC_TELEPHONE_MASK",
    "LC_TIME", "LC_TIME_MASK", "LITTLE_ENDIAN", "LLONG_MAX", "LLONG_MIN", "LONG_LONG_MAX", "LONG_LONG_MIN",
    "LONG_MAX", "LONG_MIN", "L_ctermid", "L_cuserid", "L_tmpnam", "L_tmpnam_s", "MAX_READ_LOCKS",
    "MB_CUR_MAX", "MB_LEN_MAX", "NFDBITS", "NOMINMAX", "NSIG", "NULL", "OLD_P_OVERLAY", "PATH_MAX",
    "PDP_ENDIAN", "PTRDIFF_MAX", "PTRDIFF_MIN", "PTRDIFF_WIDTH", "P_DETACH", "P_NOWAIT", "P_NOWAITO",
    "P_OVERLAY", "P_WAIT", "P_tmpdir", "RAND_MAX", "RENAME_EXCHANGE", "RENAME_NOREPLACE", "RENAME_WHITEOUT",
    "RWLS_PER_THREAD", "SCHAR_MAX", "SCHAR_MIN", "SCHED_BATCH", "SCHED_DEADLINE", "SCHED_FIFO",
    "SCHED_IDLE", "SCHED_ISO", "SCHED_MAX", "SCHED_MIN", "SCHED_OTHER", "SCHED_RESET_ON_FORK", "SCHED_RR",
    "SEEK_CUR", "SEEK_DATA", "SEEK_END", "SEEK_HOLE", "SEEK_SET", "SEM_NSEMS_MAX", "SHRT_MAX", "SHRT_MIN",
    "SIGABRT", "SIGABRT2", "SIGABRT_COMPAT", "SIGBREAK", "SIGFPE", "SIGILL", "SIGINT", "SIGSEGV", "SIGTERM",
    "SIG_ACK", "SIG_ATOMIC_MAX", "SIG_ATOMIC_MIN", "SIG_ATOMIC_WIDTH", "SIG_BLOCK", "SIG_DFL", "SIG_ERR",
    "SIG_GET", "SIG_IGN", "SIG_SETMASK", "SIG_SGE", "SIG_UNBLOCK", "SIZE_MAX", "SIZE_WIDTH", "SSIZE_MAX",
    "STDERR_FILENO", "STDIN_FILENO", "STDOUT_FILENO", "STRUNCATE", "SYS_OPEN", "TIMER_ABSTIME", "TIME_UTC",
    "TMP_MAX", "TMP_MAX_S", "UCHAR_MAX", "UINT16_C", "UINT16_MAX", "UINT16_WIDTH", "UINT32_C", "UINT32_MAX",
    "UINT32_WIDTH", "UINT64_C", "UINT64_MAX", "UINT64_WIDTH", "UINT8_C", "UINT8_MAX", "UINT8_WIDTH",
    "UINTMAX_C", "UINTMAX_MAX", "UINTMAX_WIDTH", "UINTPTR_MAX", "UINTPTR_WIDTH", "UINT_FAST16_MAX",
    "UINT_FAST16_WIDTH", "UINT_FAST32_MAX", "UINT_FAST32_WIDTH", "UINT_FAST64_MAX", "UINT_FAST64_WIDTH",
    "UINT_FAST8_MAX", "UINT_FAST8_WIDTH", "UINT_LEAST16_MAX", "UINT_LEAST16_WIDTH", "UINT_LEAST32_MAX",
    "UINT_LEAST32_WIDTH", "UINT_LEAST64_MAX", "UINT_LEAST64_WIDTH", "UINT_LEAST8_MAX", "UINT_LEAST8_WIDTH",
    "UINT_MAX", "ULLONG_MAX", "ULONG_LONG_MAX", "ULONG_MAX", "UNALIGNED", "USHRT_MAX", "WAIT_CHILD",
    "WAIT_GRANDCHILD", "WCHAR_MAX", "WCHAR_MIN", "WCHAR_WIDTH", "WCONTINUED", "WEOF", "WEXITED",
    "WEXITSTATUS", "WIDL_EXPLICIT_AGGREGATE_RETURNS", "WIFCONTINUED", "WIFEXITED", "WIFSIGNALED",
    "WIFSTOPPED", "WIN32", "WIN64", "WINNT", "WINPTHREADS_ATTRIBUTE", "WINPTHREADS_INLINE",
    "WINPTHREADS_SECTION", "WINPTHREAD_API", "WINT_MAX", "WINT_MIN", "WINT_WIDTH", "WIN_PTHREADS_H",
    "WIN_PTHREADS_PTHREAD_COMPAT_H", "WIN_PTHREADS_SIGNAL_H", "WIN_PTHREADS_TIME_H",
    "WIN_PTHREADS_UNISTD_H", "WNOHANG", "WNOWAIT", "WSTOPPED", "WSTOPSIG", "WTERMSIG", "WUNTRACED",
    "alloca", "be16toh", "be32toh", "be64toh", "environ", "errno", "finitef", "fstat64", "htobe16",
    "htobe32", "htobe64", "htole16", "htole32", "htole64", "isascii", "iscsym", "iscsymf", "isnanf",
    "le16toh", "le32toh", "le64toh", "offsetof", "onexit_t", "pclose", "popen", "sched_priority", "stat64",
    "stderr", "stdin", "stdout", "sys_errlist", "sys_nerr", "timerclear", "timercmp", "timerisset",
    "toascii", "wcswcs", "wpopen",
};

// Functions and types that these headers declare outside every namespace.
constexpr std::string_view globalNames[] = {
    "abort", "abs", "accept", "access", "alarm", "amblksiz", "asctime", "asprintf", "atexit", "atodbl",
    "atof", "atoflt", "atoi", "atol", "atoldbl", "atoll", "beep", "beginthread", "bind", "bsearch", "btowc",
    "calloc", "ceil", "cexit", "cgetws", "clearenv", "clearerr", "clock", "clone", "close", "connect",
    "cos", "cputws", "ctermid", "ctime", "cuserid", "cwait", "cwprintf", "cwscanf", "daylight",
    "debugbreak", "difftime", "div", "doserrno", "dprintf", "dstbias", "dup", "duplocale", "dysize", "ecvt",
    "endthread", "endthreadex", "execl", "execle", "execlp", "execlpe", "execv", "execve", "execvp",
    "execvpe", "exit", "exp", "expand", "fclose", "fcloseall", "fcvt", "fdopen", "feof", "ferror", "fflush",
    "fgetc", "fgetchar", "fgetpos", "fgets", "fgetwc", "fgetwchar", "fgetws", "filbuf", "fileno",
    "flockfile", "floor", "flsbuf", "flushall", "fmemopen", "fopen", "fopencookie", "fork", "fprintf",
    "fputc", "fputchar", "fputs", "fputwc", "fputwchar", "fputws", "fread", "free", "freelocale", "freopen",
    "fscanf", "fseek", "fseeko", "fsetpos", "fsopen", "ftell", "ftello", "ftime", "ftrylockfile",
    "fullpath", "funlockfile", "fwide", "fwprintf", "fwrite", "fwscanf", "gamma", "gcvt", "getc", "getchar",
    "getcpu", "getdate", "getdelim", "getenv", "getline", "getloadavg", "getmaxstdio", "getpid", "getpt",
    "gets", "getsubopt", "getsystime", "getw", "getwc", "getwch", "getwchar", "getwche", "getws", "gmtime",
    "grantpt", "heapadd", "heapchk", "heapmin", "heapset", "heapused", "heapwalk", "index", "initstate",
    "isalnum", "isalpha", "isblank", "iscntrl", "isctype", "isdigit", "isgraph", "isleadbyte", "islower",
    "isprint", "ispunct", "isspace", "isupper", "iswalnum", "iswalpha", "iswascii", "iswblank", "iswcntrl",
    "iswctype", "iswdigit", "iswgraph", "iswlower", "iswprint", "iswpunct", "iswspace", "iswupper",
    "iswxdigit", "isxdigit", "itimerspec", "itoa", "itow", "j0", "j1", "jn", "kill", "labs", "lconv",
    "ldiv", "link", "listen", "llabs", "lldiv", "lltoa", "lltow", "loaddll", "localeconv", "localtime",
    "log", "lrotl", "lrotr", "ltoa", "ltow", "makepath", "malloc", "mblen", "mbrlen", "mbrtowc", "mbsinit",
    "mbsnrtowcs", "mbsrtowcs", "mbstowcs", "mbstrlen", "mbstrnlen", "mbtowc", "memcpy", "memmove",
    "mkdtemp", "mkostemp", "mkostemps", "mkstemp", "mkstemps", "mktemp", "mktime", "msize", "nanosleep",
    "newclmap", "newcumap", "newlocale", "nice", "obstack", "onexit", "open", "overflow", "pack", "pause",
    "perror", "pipe", "pow", "printf", "pselect", "ptlocinfo", "ptmbcinfo", "ptsname", "push", "putc",
    "putchar", "putenv", "puts", "putw", "putwc", "putwch", "putwchar", "putws", "qecvt", "qfcvt", "qgcvt",
    "qsort", "raise", "rand", "random", "read", "realloc", "reallocarray", "realpath", "recalloc", "remove",
    "rename", "renameat", "resetstkoflw", "rewind", "rindex", "rmtmp", "rotl", "rotr", "round", "rpmatch",
    "scanf", "scprintf", "scwprintf", "searchenv", "select", "send", "setbuf", "setbuffer", "setenv",
    "seterrormode", "setlinebuf", "setlocale", "setmaxstdio", "setns", "setstate", "setsystime", "setvbuf",
    "sigevent", "signal", "signgam", "sin", "sleep", "snprintf", "snscanf", "snwprintf", "snwscanf",
    "socket", "spawnl", "spawnle", "spawnlp", "spawnlpe", "spawnv", "spawnve", "spawnvp", "spawnvpe",
    "splitpath", "sprintf", "srand", "srandom", "sscanf", "stat", "strdate", "strfromd", "strfromf",
    "strfroml", "strftime", "strptime", "strtime", "strtod", "strtof", "strtol", "strtold", "strtoll",
    "strtoq", "strtoul", "strtoull", "strtouq", "swab", "swprintf", "swscanf", "sync", "sysconf", "system",
    "tan", "tempnam", "threadhandle", "threadid", "time", "timeb", "timegm", "timelocal", "timespec",
    "timeval", "timex", "timezone", "tm", "tmpfile", "tmpnam", "tolower", "toupper", "towlower", "towupper",
    "truncate", "tzname", "tzset", "uflow", "uint", "ulltoa", "ulltow", "ulong", "ultoa", "ultow", "ungetc",
    "ungetwc", "ungetwch", "unlink", "unloaddll", "unlockpt", "unsetenv", "unshare", "uselocale", "ushort",
    "valloc", "vasprintf", "vcwprintf", "vdprintf", "vfprintf", "vfscanf", "vfwprintf", "vfwscanf",
    "vprintf", "vscanf", "vscprintf", "vscwprintf", "vsnprintf", "vsnwprintf", "vsprintf", "vsscanf",
    "vswprintf", "vswscanf", "vwprintf", "vwscanf", "waccess", "wait", "wasctime", "wchdir", "wchmod",
    "wcpcpy", "wcpncpy", "wcreat", "wcrtomb", "wcscasecmp", "wcscat", "wcschr", "wcschrnul", "wcscmp",
    "wcscoll", "wcscpy", "wcscspn", "wcsdup", "wcserror", "wcsftime", "wcsicmp", "wcsicoll", "wcslen",
    "wcslwr", "wcsncasecmp", "wcsncat", "wcsncmp", "wcsncoll", "wcsncpy", "wcsnicmp", "wcsnicoll",
    "wcsnlen", "wcsnrtombs", "wcsnset", "wcspbrk", "wcsrchr", "wcsrev", "wcsrtombs", "wcsset", "wcsspn",
    "wcsstr", "wcstod", "wcstof", "wcstok", "wcstol", "wcstold", "wcstoll", "wcstombs", "wcstoq", "wcstoul",
    "wcstoull", "wcstouq", "wcsupr", "wcswidth", "wcsxfrm", "wctime", "wctob", "wctomb", "wcwidth",
    "wexecl", "wexecle", "wexeclp", "wexeclpe", "wexecv", "wexecve", "wexecvp", "wexecvpe", "wfdopen",
    "wfopen", "wfreopen", "wfsopen", "wfullpath", "wgetcwd", "wgetdcwd", "wgetenv", "wmakepath", "wmemchr",
    "wmemcmp", "wmemcpy", "wmemmove", "wmempcpy", "wmemset", "wmkdir", "wmktemp", "wopen", "wperror",
    "wprintf", "wputenv", "wremove", "wrename", "write", "wrmdir", "wscanf", "wsearchenv", "wsetlocale",
    "wsopen", "wspawnl", "wspawnle", "wspawnlp", "wspawnlpe", "wspawnv", "wspawnve", "wspawnvp",
    "wspawnvpe", "wsplitpath", "wstrdate", "wstrtime", "wsystem", "wtempnam", "wtmpnam", "wtof", "wtoi",
    "wtol", "wtoll", "wunlink", "y0", "y1", "yn",
};

// Names that a file cannot have on one of the targets.
constexpr std::string_view devices[] = {
    "aux", "com0", "com1", "com2", "com3", "com4", "com5", "com6", "com7", "com8", "com9", "con", "conin$",
    "conout$", "lpt0", "lpt1", "lpt2", "lpt3", "lpt4", "lpt5", "lpt6", "lpt7", "lpt8", "lpt9", "nul", "prn",
};

// clang-format on

template <std::size_t count>
std::unordered_set<std::string_view> setOf(std::string_view const (&words)[count])
{
    return {std::begin(words), std::end(words)};
}

}  // namespace

bool isReservedWord(std::string_view word)
{
    static auto const keywordSet = setOf(keywords);
    static auto const macroSet = setOf(macros);
    return keywordSet.count(word) > 0 || macroSet.count(word) > 0;
}

bool isReservedGlobally(std::string_view word)
{
    static auto const set = setOf(globalNames);
    return set.count(word) > 0;
}

bool isDeviceName(std::string_view lowerCaseStem)
{
    static auto const set = setOf(devices);
    return set.count(lowerCaseStem) > 0;
}

}  // namespace modelgen
