// What the proof is to find: a program that looks at nothing.

#include "faults/operations.h"
#include "faults/testfiles.h"

#include <QFile>

namespace {

class CarelessWriter : public WindowOperation {
public:
    void prepare(const QString &folder) override
    {
        m_folder = folder;
        writeText(folder + "/target", "an earlier file");
    }
    [[nodiscard]] QStringList targets() const override { return {"target"}; }

protected:
    void perform() override
    {
        QFile scratch(m_folder + "/scratch");
        QFile target(m_folder + "/target");
        if (!scratch.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
            !target.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return;
        scratch.write("one part, ");
        target.write("one part, ");
        if (target.write("and another") > 0)
            scratch.remove();
    }

private:
    QString m_folder;
};

} // namespace

OperationEntry carelessOperation()
{
    return {"careless", [] { return std::make_unique<CarelessWriter>(); }};
}
