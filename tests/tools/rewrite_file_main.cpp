// SPDX-License-Identifier: GPL-3.0-or-later
// tav-test-rewrite-file FILE: another program at work on a file that Tav
// reads. Keeps the file's bytes, then until its standard input closes it
// shortens the file in place (to nothing, or to a random length) and
// writes it again piece by piece, so a reader meets every length between
// empty and whole, and files that shrink under it.
#include <QByteArray>
#include <QFile>
#include <QRandomGenerator>

#include <atomic>
#include <cstdio>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: tav-test-rewrite-file FILE\n");
        return 2;
    }
    QFile source(QString::fromLocal8Bit(argv[1]));
    const int fd = ::open(argv[1], O_WRONLY);
    if (!source.open(QIODevice::ReadOnly) || fd < 0) {
        std::fprintf(stderr, "cannot read and write %s\n", argv[1]);
        return 1;
    }
    const QByteArray bytes = source.readAll();

    std::atomic<bool> stop = false;
    std::thread watch([&stop] {
        char c;
        while (::read(STDIN_FILENO, &c, 1) > 0) {
        }
        stop = true;
    });
    std::printf("rewriting\n");
    std::fflush(stdout);

    QRandomGenerator random(16);
    long cycles = 0;
    while (!stop) {
        const qsizetype kept = random.bounded(2) ? 0 : random.bounded(bytes.size());
        if (::ftruncate(fd, kept) != 0)
            break;
        for (qsizetype at = kept; at < bytes.size() && !stop;) {
            const qsizetype piece =
                std::min<qsizetype>(bytes.size() - at, 1 + random.bounded(1 << 18));
            if (::pwrite(fd, bytes.constData() + at, size_t(piece), at) != piece)
                break;
            at += piece;
        }
        ++cycles;
    }
    ::close(fd);
    watch.join();
    std::printf("%ld rewrites\n", cycles);
    return 0;
}
