#include "importers/sdtswalk.h"

#include "iso8211/sio_8211forwarditerator.h"
#include "iso8211/sio_8211reader.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iostream>
#include <streambuf>

namespace {

const sio_8211Converter_I converter_i;
const sio_8211Converter_R converter_r;
const sio_8211Converter_S converter_s;
const sio_8211Converter_BI8 converter_bi8;
const sio_8211Converter_BI16 converter_bi16;
const sio_8211Converter_BI24 converter_bi24;
const sio_8211Converter_BI32 converter_bi32;
const sio_8211Converter_BUI8 converter_bui8;
const sio_8211Converter_BUI16 converter_bui16;
const sio_8211Converter_BUI24 converter_bui24;
const sio_8211Converter_BUI32 converter_bui32;
const sio_8211Converter_BFP32 converter_bfp32;
const sio_8211Converter_BFP64 converter_bfp64;

const sio_8211ConverterHints &convertersByName()
{
    static const sio_8211ConverterHints converters = {
        {"I", &converter_i},         {"R", &converter_r},
        {"S", &converter_s},         {"BI8", &converter_bi8},
        {"BI16", &converter_bi16},   {"BI24", &converter_bi24},
        {"BI32", &converter_bi32},   {"BUI8", &converter_bui8},
        {"BUI16", &converter_bui16}, {"BUI24", &converter_bui24},
        {"BUI32", &converter_bui32}, {"BFP32", &converter_bfp32},
        {"BFP64", &converter_bfp64}};
    return converters;
}

sio_8211ConverterHints hintsOf(const CConverterType *row)
{
    sio_8211ConverterHints hints;
    for (; row != nullptr && row->mnemonic != nullptr && *row->mnemonic != '\0'; ++row) {
        if (row->converterName == nullptr)
            continue;
        const auto found = convertersByName().find(row->converterName);
        if (found != convertersByName().end())
            hints[row->mnemonic] = found->second;
    }
    return hints;
}

// Gathers what is written to a stream while it lives. A walk writes a few bytes a
// field, and the standard output is not always buffered.
class GatheredOutput : private std::streambuf {
public:
    explicit GatheredOutput(std::ostream &stream)
        : m_stream(stream), m_state(stream.rdstate()), m_target(stream.rdbuf(this))
    {
        setp(m_block.data(), m_block.data() + m_block.size());
    }
    ~GatheredOutput() override
    {
        passOn();
        m_stream.rdbuf(m_target);
        m_stream.clear(m_state);
    }
    GatheredOutput(const GatheredOutput &) = delete;
    GatheredOutput &operator=(const GatheredOutput &) = delete;

private:
    // What the target does not take is lost: the text matters less than the walk.
    void passOn()
    {
        if (m_target != nullptr && pptr() != pbase())
            m_target->sputn(pbase(), pptr() - pbase());
        setp(m_block.data(), m_block.data() + m_block.size());
    }
    int_type overflow(int_type c) override
    {
        passOn();
        if (!traits_type::eq_int_type(c, traits_type::eof()))
            sputc(traits_type::to_char_type(c));
        return traits_type::not_eof(c);
    }
    int sync() override
    {
        passOn();
        return 0;
    }

    std::array<char, 65536> m_block;
    std::ostream &m_stream;
    std::ios::iostate m_state;
    std::streambuf *m_target;
};

// False if it was asked to stop.
bool walkRecords(std::ifstream &file, const CConverterType *hints, Progress &progress)
{
    constexpr int RecordsPerStep = 16;
    const sio_8211ConverterHints converters = hintsOf(hints);
    file.seekg(0, std::ios::end);
    const qint64 size = file.tellg(); // below 0 where there is none
    file.clear();
    file.seekg(0);
    const GatheredOutput gathered(std::cout);
    sio_8211Reader reader(file, &converters);
    int record = 0;
    for (sio_8211ForwardIterator i(reader); i; ++i) {
        if (record++ % RecordsPerStep == 0 &&
            !progress.step(file.tellg(), std::max<qint64>(size, 0)))
            return false;
        i.walk(std::cout);
    }
    return true;
}

} // namespace

int ReadSDTS(const char *fileName, const CConverterType *hints)
{
    std::ifstream file(fileName, std::ios::binary);
    if (!file)
        return -1;
    NoProgress unwatched;
    (void)walkRecords(file, hints, unwatched);
    return 0;
}

bool walkSDTS(const char *fileName, const CConverterType *hints, Progress &progress)
{
    std::ifstream file(fileName, std::ios::binary);
    return !file || walkRecords(file, hints, progress);
}

void toLowerCaseSTD(std::string &text)
{
    for (char &c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
}
