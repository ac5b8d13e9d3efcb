// A stand-in for the program entry in the single-instance tests:
//   instance_lock_probe <folder> <ja|en>
// takes the single-instance step on folder, then prints "acquired" and waits to be
// killed, holding the lock.
#include "core/app/Language.h"
#include "platform/linux/InstanceLock.h"

#include <cstdio>
#include <cstring>
#include <unistd.h>

int main(int argc, char* argv[]) {
    if (argc != 3)
        return 2;
    deskmark::Language::setJapanese(std::strcmp(argv[2], "ja") == 0);
    deskmark::InstanceLock::ensureSingleInstance(QString::fromLocal8Bit(argv[1]));
    std::puts("acquired");
    std::fflush(stdout);
    for (;;)
        pause();
}
