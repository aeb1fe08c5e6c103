#include "app/base/Guarded.h"

#include <exception>
#include <new>

#include "app/base/Definitions.h"
#include "app/base/Error.h"
#include "app/base/ErrorLog.h"

using namespace Qt::StringLiterals;

namespace {

CurrentError describeCurrentException() {
    try {
        throw;
    } catch (const Error& error) {
        return {error.number(), error.description()};
    } catch (const std::bad_alloc&) {
        return {7, u"内存不足，请关闭其他程序后重试"_s};
    } catch (const std::exception& error) {
        return {5, u"程序出错，操作没有完成（%1）"_s.arg(QString::fromUtf8(error.what()))};
    } catch (...) {
        return {5, u"程序出错，操作没有完成"_s};
    }
}

}  // namespace

void recordCurrentException(const Where& where) {
    currentError() = describeCurrentException();
    errLog().WriteLog(QString::fromLatin1(where.module), QString::fromLatin1(where.procedure));
    currentError() = {};
}
