#pragma once

/// Leads standard output to nowhere while it lives: for work that writes texts there
/// which are no report.
class QuietOutput {
public:
    QuietOutput();
    ~QuietOutput();
    QuietOutput(const QuietOutput &) = delete;
    QuietOutput &operator=(const QuietOutput &) = delete;

private:
    int m_former = -1; // a descriptor of what standard output was
};
