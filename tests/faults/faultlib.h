#pragma once

/// A library that makes the n-th write, flush, rename or allocation of a process fail.
///
/// It stands before the C library, either preloaded or linked first. Of what a process
/// does, only that counts which concerns regular files, and allocations that the code of
/// the main program asks for, directly or through a call to a library.
///
/// A program that is preloaded with it takes its orders from the environment:
/// ZEPHRANT_FAULT=KIND:N, and ZEPHRANT_FAULT_REPORT=FILE for what happened.

enum FaultKind {
    FaultWrite,      // one write says that there is no room
    FaultDiskFull,   // so do all from the n-th on, which itself takes a part
    FaultFlush,      // one flush to the disk fails
    FaultRename,     // one file does not get its name
    FaultCreate,     // one file is not made
    FaultAllocation, // one allocation fails
    FaultKinds
};

extern "C" {
/// The n-th from now on fails, counted from 1; none for 0. Counts begin anew.
void faultArm(FaultKind kind, long n);
/// Nothing fails or counts from now on.
void faultDisarm();
/// Nothing fails or counts on this thread in between; may be nested.
void faultPause();
void faultResume();
/// How many there were since they were armed.
long faultCount(FaultKind kind);
/// Whether something has failed since.
int faultHappened();
/// Makes the file system one that knows no files without a name.
void faultForbidUnnamedFiles(int forbid);
/// Where a program that ends in an exception says so: a buffer of `size` bytes.
void faultNoteEndsIn(char *buffer, unsigned long size);
}
