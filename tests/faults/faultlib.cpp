#include "faultlib.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

extern "C" {
void *__libc_malloc(size_t);
void *__libc_calloc(size_t, size_t);
void *__libc_realloc(void *, size_t);
void *__libc_memalign(size_t, size_t);
}

namespace {

constexpr const char *KindNames[FaultKinds] = {"write",  "full",   "flush",
                                               "rename", "create", "allocation"};

std::atomic<bool> isArmed = false;
std::atomic<int> armedKind = FaultKinds;
std::atomic<long> armedNumber = 0;
std::atomic<long> counts[FaultKinds];
std::atomic<bool> happened = false;
std::atomic<bool> noUnnamedFiles = false;
__attribute__((tls_model("initial-exec"))) thread_local int paused = 0;

std::uintptr_t programBegin = 0, programEnd = 0;
char *noteBuffer = nullptr;
unsigned long noteSize = 0;
const char *reportName = nullptr;

// Counts one of a kind; true where it is to fail.
bool strikes(FaultKind kind)
{
    if (!isArmed || paused != 0)
        return false;
    const long n = ++counts[kind];
    const long wanted = armedNumber;
    const bool strike = kind == armedKind && wanted > 0 &&
                        (kind == FaultDiskFull ? n >= wanted : n == wanted);
    if (strike)
        happened = true;
    return strike;
}

bool isRegular(int file)
{
    struct stat status {};
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

bool isProgram(const void *address)
{
    const auto at = reinterpret_cast<std::uintptr_t>(address);
    return at >= programBegin && at < programEnd;
}

// Whether the code of the program stands close behind an allocation: it asks for memory
// itself, or by a call to a library that does so at once.
bool isOwnAllocation()
{
    constexpr int Own = 3; // frames of this library
    constexpr int Close = 6;
    void *frames[Own + Close];
    const int count = ::backtrace(frames, Own + Close);
    return std::any_of(frames, frames + count, isProgram);
}

bool allocationFails()
{
    // Looks at the stack take time, so there are none while something else is to fail.
    const bool wanted = armedKind == FaultAllocation || armedNumber == 0;
    if (!isArmed || !wanted || paused != 0)
        return false;
    ++paused; // the look at the stack may ask for memory
    const bool own = isOwnAllocation();
    --paused;
    return own && strikes(FaultAllocation);
}

template <typename Function> Function *next(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

// --- The program and its end -------------------------------------------------------

int findProgram(dl_phdr_info *info, std::size_t, void *)
{
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const ElfW(Phdr) &part = info->dlpi_phdr[i];
        if (part.p_type == PT_LOAD && (part.p_flags & PF_X) != 0) {
            programBegin = info->dlpi_addr + part.p_vaddr;
            programEnd = programBegin + part.p_memsz;
        }
    }
    return 1; // the program is the first
}

// "module(function)" of a frame, or the place in the module where no function is known.
void describe(const void *frame, char *text, std::size_t size)
{
    Dl_info info{};
    if (::dladdr(frame, &info) == 0)
        info.dli_fname = "?";
    const char *const slash = std::strrchr(info.dli_fname, '/');
    const char *const module = slash ? slash + 1 : info.dli_fname;
    const auto *const base = static_cast<const char *>(info.dli_fbase);
    if (info.dli_sname)
        std::snprintf(text, size, "%s(%s)", module, info.dli_sname);
    else
        std::snprintf(text, size, "%s(+%#tx)", module,
                      static_cast<const char *>(frame) - base);
}

// The frames that led to the end of the program.
void noteFrames()
{
    ++paused;
    void *frames[24];
    const int count = ::backtrace(frames, 24);
    char all[2048] = "";
    for (int i = 0; i < count; ++i) {
        char one[160];
        describe(frames[i], one, sizeof one);
        std::strncat(all, one, sizeof all - std::strlen(all) - 2);
        std::strcat(all, " ");
    }
    if (noteBuffer)
        std::snprintf(noteBuffer, noteSize, "%s", all);
    std::FILE *const report = reportName ? std::fopen(reportName, "w") : nullptr;
    if (!report)
        return;
    std::fprintf(report, "end %s\n", all);
    std::fclose(report);
}

// An exception that nobody caught.
void onTerminate()
{
    noteFrames();
    std::abort();
}

// Memory that was not there is used.
void onBadAccess(int signal)
{
    std::signal(signal, SIG_DFL);
    noteFrames();
    std::raise(signal);
}

__attribute__((constructor)) void begin()
{
    ::dl_iterate_phdr(findProgram, nullptr);
    std::set_terminate(onTerminate);
    std::signal(SIGSEGV, onBadAccess);
    void *frames[1];
    ::backtrace(frames, 1); // loads what it needs
    reportName = std::getenv("ZEPHRANT_FAULT_REPORT");
    noUnnamedFiles = std::getenv("ZEPHRANT_FAULT_NAMED") != nullptr;
    const char *const order = std::getenv("ZEPHRANT_FAULT");
    if (!order)
        return;
    const char *const colon = std::strchr(order, ':');
    const long n = colon ? std::atol(colon + 1) : 0;
    for (int kind = 0; kind < FaultKinds; ++kind)
        if (std::strncmp(order, KindNames[kind], std::strlen(KindNames[kind])) == 0)
            faultArm(FaultKind(kind), n);
}

__attribute__((destructor)) void end()
{
    faultDisarm();
    std::FILE *const report = reportName ? std::fopen(reportName, "w") : nullptr;
    if (!report)
        return;
    for (int kind = 0; kind < FaultKinds; ++kind)
        std::fprintf(report, "%s %ld\n", KindNames[kind], counts[kind].load());
    std::fprintf(report, "happened %d\n", happened ? 1 : 0);
    std::fclose(report);
}

} // namespace

// --- Orders ------------------------------------------------------------------------

extern "C" {

void faultArm(FaultKind kind, long n)
{
    for (auto &count : counts)
        count = 0;
    happened = false;
    armedKind = kind;
    armedNumber = n;
    isArmed = true;
}

void faultDisarm() { isArmed = false; }
void faultPause() { ++paused; }
void faultResume() { --paused; }
long faultCount(FaultKind kind) { return counts[kind]; }
int faultHappened() { return happened ? 1 : 0; }
void faultForbidUnnamedFiles(int forbid) { noUnnamedFiles = forbid != 0; }

void faultNoteEndsIn(char *buffer, unsigned long size)
{
    noteBuffer = buffer;
    noteSize = size;
}

// --- Files -------------------------------------------------------------------------

ssize_t write(int file, const void *data, size_t size)
{
    static auto *const real = next<ssize_t(int, const void *, size_t)>("write");
    if (!isArmed || !isRegular(file))
        return real(file, data, size);
    const bool fails = strikes(FaultWrite);
    const bool fills = strikes(FaultDiskFull);
    if (fills && counts[FaultDiskFull] == armedNumber && size > 1)
        return real(file, data, size / 2); // a part still fits
    if (fails || fills)
        return errno = ENOSPC, -1;
    return real(file, data, size);
}

ssize_t pwrite(int file, const void *data, size_t size, off_t at)
{
    static auto *const real = next<ssize_t(int, const void *, size_t, off_t)>("pwrite");
    const bool fails = strikes(FaultWrite);
    if (strikes(FaultDiskFull) || fails)
        return errno = ENOSPC, -1;
    return real(file, data, size, at);
}

ssize_t pwrite64(int file, const void *data, size_t size, off64_t at)
{
    return pwrite(file, data, size, at);
}

int fallocate(int file, int mode, off_t from, off_t size)
{
    static auto *const real = next<int(int, int, off_t, off_t)>("fallocate");
    return strikes(FaultDiskFull) ? (errno = ENOSPC, -1) : real(file, mode, from, size);
}

int fallocate64(int file, int mode, off64_t from, off64_t size)
{
    return fallocate(file, mode, from, size);
}

int fsync(int file)
{
    static auto *const real = next<int(int)>("fsync");
    return strikes(FaultFlush) ? (errno = EIO, -1) : real(file);
}

int fdatasync(int file) { return fsync(file); }

int rename(const char *from, const char *to)
{
    static auto *const real = next<int(const char *, const char *)>("rename");
    return strikes(FaultRename) ? (errno = EIO, -1) : real(from, to);
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
              unsigned int flags)
{
    static auto *const real =
        next<int(int, const char *, int, const char *, unsigned int)>("renameat2");
    return strikes(FaultRename) ? (errno = EIO, -1)
                                : real(fromFolder, from, toFolder, to, flags);
}

int link(const char *from, const char *to)
{
    static auto *const real = next<int(const char *, const char *)>("link");
    return strikes(FaultRename) ? (errno = EIO, -1) : real(from, to);
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags)
{
    static auto *const real =
        next<int(int, const char *, int, const char *, int)>("linkat");
    return strikes(FaultRename) ? (errno = EIO, -1)
                                : real(fromFolder, from, toFolder, to, flags);
}

int open(const char *name, int flags, ...)
{
    static auto *const real = next<int(const char *, int, ...)>("open");
    std::va_list rest;
    va_start(rest, flags);
    const bool unnamed = (flags & O_TMPFILE) == O_TMPFILE;
    const bool makes = unnamed || (flags & O_CREAT) != 0;
    const mode_t mode = makes ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    if (unnamed && noUnnamedFiles)
        return errno = EOPNOTSUPP, -1;
    if (makes && strikes(FaultCreate))
        return errno = ENOSPC, -1;
    return real(name, flags, mode);
}

int open64(const char *name, int flags, ...)
{
    std::va_list rest;
    va_start(rest, flags);
    const bool makes = (flags & (O_CREAT | O_TMPFILE)) != 0;
    const mode_t mode = makes ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return open(name, flags | O_LARGEFILE, mode);
}

// --- Allocations -------------------------------------------------------------------

void *malloc(size_t size)
{
    return allocationFails() ? (errno = ENOMEM, nullptr) : __libc_malloc(size);
}

void *calloc(size_t count, size_t size)
{
    return allocationFails() ? (errno = ENOMEM, nullptr) : __libc_calloc(count, size);
}

void *realloc(void *old, size_t size)
{
    return allocationFails() ? (errno = ENOMEM, nullptr) : __libc_realloc(old, size);
}

} // extern "C"

namespace {

void *allocate(std::size_t size, std::size_t alignment)
{
    if (allocationFails())
        return nullptr;
    size = std::max<std::size_t>(size, 1);
    return alignment == 0 ? __libc_malloc(size) : __libc_memalign(alignment, size);
}

void *allocateOrThrow(std::size_t size, std::size_t alignment)
{
    void *const memory = allocate(size, alignment);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

} // namespace

void *operator new(std::size_t size) { return allocateOrThrow(size, 0); }

void *operator new[](std::size_t size) { return allocateOrThrow(size, 0); }

void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return allocate(size, 0);
}

void *operator new[](std::size_t size, const std::nothrow_t &) noexcept
{
    return allocate(size, 0);
}

void *operator new(std::size_t size, std::align_val_t alignment)
{
    return allocateOrThrow(size, std::size_t(alignment));
}

void *operator new[](std::size_t size, std::align_val_t alignment)
{
    return allocateOrThrow(size, std::size_t(alignment));
}

void operator delete(void *memory) noexcept { std::free(memory); }
void operator delete[](void *memory) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void *memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void *memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t, std::align_val_t) noexcept
{
    std::free(memory);
}
