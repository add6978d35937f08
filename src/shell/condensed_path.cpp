#include "shell/condensed_path.h"

namespace shell {

namespace {

// width / 2 rounded half to even, as the platform's integer conversion does.
int halfRounded(int width)
{
    const int half = width / 2;
    if (width % 2 == 0)
        return half;
    return half % 2 == 0 ? half : half + 1;
}

} // namespace

QString CondensedPath(const QString &path, int width)
{
    const int length = int(path.size());
    if (length <= width)
        return path;
    // 1-based position of the last separator; the tail starts with it.
    const int last = int(path.lastIndexOf(QLatin1Char('/'))) + 1;
    const int tailLength = last > 0 ? length - last + 1 : length - halfRounded(width);
    int headLength = halfRounded(width);
    const int from = width - length + last;
    if (from >= 1) {
        const int found = int(path.lastIndexOf(QLatin1Char('/'), from - 1)) + 1;
        if (found > 0)
            headLength = found;
    }
    return path.left(headLength) + QStringLiteral("..") + path.right(qMax(0, tailLength));
}

} // namespace shell
