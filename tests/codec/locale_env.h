// Sets LC_ALL, LC_CTYPE and LANG for one test (nullptr unsets) and restores them afterwards.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

class LocaleEnv {
public:
    LocaleEnv(const char* lcAll, const char* lcCtype, const char* lang) {
        const char* values[] = {lcAll, lcCtype, lang};
        for (int i = 0; i < 3; ++i) {
            if (const char* old = std::getenv(kNames[i])) saved_[i] = old;
            Set(kNames[i], values[i]);
        }
    }
    ~LocaleEnv() {
        for (int i = 0; i < 3; ++i) Set(kNames[i], saved_[i] ? saved_[i]->c_str() : nullptr);
    }
    LocaleEnv(const LocaleEnv&) = delete;
    LocaleEnv& operator=(const LocaleEnv&) = delete;

private:
    static void Set(const char* name, const char* value) {
        value ? setenv(name, value, 1) : unsetenv(name);
    }
    static constexpr const char* kNames[] = {"LC_ALL", "LC_CTYPE", "LANG"};
    std::optional<std::string> saved_[3];
};
