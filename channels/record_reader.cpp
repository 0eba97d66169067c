#include "channels/record_reader.h"

RecordReader::~RecordReader() {
    if (m_buffer != nullptr) LocalFree(m_buffer);
}

CEOID RecordReader::Read() {
    m_count = 0;
    return CeReadRecordPropsEx(m_database, CEDB_ALLOWREALLOC, &m_count, nullptr, &m_buffer, &m_size, nullptr);
}
