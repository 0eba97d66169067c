// Reads the records of an open database one after another, all properties of each.
#pragma once

#include <windows.h>

#include <cedb.h>

class RecordReader {
  public:
    explicit RecordReader(HANDLE database) : m_database(database) {}
    ~RecordReader();
    RecordReader(const RecordReader&) = delete;
    RecordReader& operator=(const RecordReader&) = delete;

    // The record under the cursor, which then moves on; 0 when there is none. What the last call gave is
    // gone.
    CEOID Read();
    const CEPROPVAL* begin() const { return reinterpret_cast<const CEPROPVAL*>(m_buffer); }
    const CEPROPVAL* end() const { return begin() + m_count; }

  private:
    HANDLE m_database;
    BYTE* m_buffer = nullptr;  // one buffer for the whole scan; the database enlarges it
    DWORD m_size = 0;
    WORD m_count = 0;
};
