#include "commands/quietoutput.h"

#include <cstdio>
#include <iostream>

#include <fcntl.h>
#include <unistd.h>

namespace {

void writeOut()
{
    std::cout.flush();
    std::fflush(stdout);
}

} // namespace

QuietOutput::QuietOutput()
{
    writeOut();
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0)
        return;
    m_former = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    if (m_former >= 0)
        ::dup2(nowhere, STDOUT_FILENO);
    ::close(nowhere);
}

QuietOutput::~QuietOutput()
{
    writeOut();
    if (m_former < 0)
        return;
    ::dup2(m_former, STDOUT_FILENO);
    ::close(m_former);
}
