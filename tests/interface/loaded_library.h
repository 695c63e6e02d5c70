// The built library, opened by path and closed again: each LoadedLibrary has a driver in its first state.
#ifndef DRAVO_TESTS_INTERFACE_LOADED_LIBRARY_H
#define DRAVO_TESTS_INTERFACE_LOADED_LIBRARY_H

#include <cstddef>
#include <string>

class LoadedLibrary {
public:
    LoadedLibrary();
    ~LoadedLibrary();
    LoadedLibrary(const LoadedLibrary &) = delete;
    LoadedLibrary &operator=(const LoadedLibrary &) = delete;

    /// Address of the symbol; null when the library does not export it, found in no other library.
    void *symbol(const char *name) const;

    /// A function by its plain name: entry<decltype(DataCom)>("DataCom").
    template <typename Function>
    Function *entry(const char *name) const {
        return reinterpret_cast<Function *>(symbol(name));
    }

private:
    void *handle;
};

/// A value at a byte offset of a record, aligned or not.
template <typename Value>
Value valueAt(const void *record, size_t offset) {
    Value value;
    __builtin_memcpy(&value, static_cast<const char *>(record) + offset, sizeof value);
    return value;
}

/// A container that lies at a byte offset of a record.
template <typename Container>
const Container &containerAt(const void *record, size_t offset) {
    return *reinterpret_cast<const Container *>(static_cast<const char *>(record) + offset);
}

#endif  // DRAVO_TESTS_INTERFACE_LOADED_LIBRARY_H
