#include "tests/support/FakeHost.h"

#include "common/RunError.h"

namespace tallyroom {

namespace {

class FakeBucket : public LateBoundObject {
public:
    explicit FakeBucket(FakeHost& host) {
        const auto fill = [&host](const QString& name, const Arguments& args) {
            host.calls.append(name);
            const ObjectRef list = argument(args, 0).toObject();
            list.call(QStringLiteral("Clear"));
            for (const QString& entry : host.selection)
                list.call(QStringLiteral("AddItem"), {Variant(entry)});
            return Variant();
        };
        for (const auto& name : {QStringLiteral("FillSpot"), QStringLiteral("fillalist")})
            addMethod(name, [fill, name](const Arguments& args) { return fill(name, args); });
        addMethod(QStringLiteral("Show"), [&host](const Arguments&) {
            host.calls.append(QStringLiteral("Show bucket"));
            if (host.onShowBucket)
                host.onShowBucket();
            return Variant();
        });
        addProperty(
            QStringLiteral("AllowSort"), [](const Arguments&) { return Variant(true); },
            [&host](const Arguments&) {
                host.calls.append(QStringLiteral("AllowSort"));
                return Variant();
            });
        addProperty(QStringLiteral("BucketName"), [&host](const Arguments&) {
            if (!host.bucketName)
                throw RunError::make(ErrorNumber::noSuchMember);
            return Variant(*host.bucketName);
        });
        addProperty(QStringLiteral("employeefilter"), [&host](const Arguments&) {
            if (host.onFilterRead)
                host.onFilterRead();
            return Variant(host.filter);
        });
    }
};

class FakeMonthView : public LateBoundObject {
public:
    explicit FakeMonthView(FakeHost& host) {
        addProperty(
            QStringLiteral("Value"),
            [&host](const Arguments&) {
                return host.pickedDate.isEmpty() ? Variant(host.shownDate) : host.pickedDate;
            },
            [&host](const Arguments& args) {
                host.shownDate = argument(args, 0).toDate();
                return Variant();
            });
    }
};

class FakeDatePicker : public LateBoundObject {
public:
    explicit FakeDatePicker(FakeHost& host) {
        addProperty(QStringLiteral("MonthView1"),
                    [&host](const Arguments&) { return Variant(makeObject<FakeMonthView>(host)); });
        addProperty(QStringLiteral("WasPicked"),
                    [&host](const Arguments&) { return Variant(!host.pickedDate.isEmpty()); });
        addMethod(QStringLiteral("Show"), [&host](const Arguments&) {
            host.calls.append(QStringLiteral("Show date picker"));
            return Variant();
        });
    }
};

class FakeMenu : public LateBoundObject {
public:
    explicit FakeMenu(FakeHost& host) {
        for (const char* name : {"ttedit_click", "mnupms_click", "mnuchangesched_click",
                                 "mnuemployeesch_click", "mnu_ot_anal_click"}) {
            const QString handler = QString::fromLatin1(name);
            addMethod(handler, [&host, handler](const Arguments&) {
                host.calls.append(handler);
                return Variant();
            });
        }
    }
};

class FakeSplash : public LateBoundObject {
public:
    explicit FakeSplash(FakeHost& host) {
        addProperty(QStringLiteral("Picture"),
                    [&host](const Arguments&) { return Variant(host.picture); });
    }
};

// An image of one pixel.
QByteArray smallPicture() {
    return QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mP8z8BQ"
                                  "DwAEhQGAhKmMIQAAAABJRU5ErkJggg==");
}

} // namespace

HostContext FakeHost::context(const QString& dataPath, const QString& user) {
    picture = smallPicture();
    return {dataPath,
            makeObject<FakeBucket>(*this),
            makeObject<FakeDatePicker>(*this),
            makeObject<FakeMenu>(*this),
            makeObject<FakeSplash>(*this),
            user};
}

} // namespace tallyroom
