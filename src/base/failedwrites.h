#pragma once

/// Makes writes that cannot succeed fail, where the system would end the program: beyond
/// the largest size that a file may have (SIGXFSZ), and into a pipe that nobody reads any
/// more (SIGPIPE). Standard streams that are closed are led to nowhere, so that no file
/// of the program's own gets their numbers and, with them, their lines.
///
/// To be called once, before anything else, by every program.
void surviveFailedWrites();
