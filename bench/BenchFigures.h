#pragma once

#include <QList>

#include <algorithm>
#include <cstdio>

// Times in milliseconds, printed as their median and worst.
struct Figures {
    QList<double> ms;
    void print(const char* what) {
        std::sort(ms.begin(), ms.end());
        if (ms.isEmpty())
            return;
        std::printf("%-40s median %7.2f ms   worst %7.2f ms   (%lld runs)\n", what,
                    ms[ms.size() / 2], ms.last(), static_cast<long long>(ms.size()));
    }
};
