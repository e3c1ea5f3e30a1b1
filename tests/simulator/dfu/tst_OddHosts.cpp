// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/LittleEndian.h"
#include "tests/support/DfuRequests.h"
#include "tests/support/GoldenPackages.h"

#include <QtTest>

#include <functional>

using namespace DfuRequests;
using LittleEndian::bytes;

namespace {

/// A host that flashes a package, and whose habits a test chooses.
class Host
{
public:
    explicit Host(Bootloader &bootloader)
        : m_bootloader(bootloader)
    { }

    int chunkSize = 1000;
    int requestsLeft = -1; ///< The host is gone after so many requests; never if -1.
    int pieceSize = 0; ///< Requests are sent in pieces of so many bytes, or whole if 0.
    std::function<void(Dfu::ObjectType current)> afterEach; ///< Called after each response.

    /// Flashes the package, and resumes what the device has of it. Returns whether the device took
    /// everything.
    bool flash(const QByteArray &packet, const QByteArray &image)
    {
        return transfer(Dfu::CommandObject, packet, Bootloader::kMaxCommandSize)
            && transfer(Dfu::DataObject, image, Bootloader::kMaxDataSize);
    }

private:
    bool transfer(Dfu::ObjectType type, const QByteArray &all, int objectSize)
    {
        m_type = type;
        const QByteArray position
            = ask(opcode(Dfu::SelectObject) + static_cast<char>(type)).mid(6, 4);
        if (position.isEmpty()) {
            return false;
        }
        const auto there = static_cast<int>(LittleEndian::number<quint32>(position));
        // A whole object may or may not have been executed, so it is executed again.
        int end = qMin((there + objectSize - 1) / objectSize * objectSize, int(all.size()));
        if (there > 0 && !(write(all.mid(there, end - there)) && isOk(opcode(Dfu::Execute)))) {
            return false;
        }
        while (end < all.size()) {
            const QByteArray object = all.mid(end, objectSize);
            const QByteArray size = bytes(static_cast<quint32>(object.size()));
            if (!isOk(opcode(Dfu::CreateObject) + static_cast<char>(type) + size) || !write(object)
                || !isOk(opcode(Dfu::Execute))) {
                return false;
            }
            end += static_cast<int>(object.size());
        }
        return true;
    }

    bool write(const QByteArray &object)
    {
        for (int i = 0; i < object.size() && requestsLeft != 0; i += chunkSize) {
            ask(opcode(Dfu::WriteObject) + object.mid(i, chunkSize));
        }
        return requestsLeft != 0;
    }

    bool isOk(const QByteArray &request) { return ask(request) == ok(Dfu::Opcode(request.at(0))); }

    QByteArray ask(const QByteArray &request)
    {
        if (requestsLeft == 0) {
            return {};
        }
        --requestsLeft;
        const QByteArray frame = Slip::encode(request);
        const int size = pieceSize > 0 ? pieceSize : int(frame.size());
        QByteArray answer;
        for (int i = 0; i < frame.size(); i += size) {
            answer += m_bootloader.receive(frame.mid(i, size));
        }
        if (afterEach) {
            afterEach(m_type);
        }
        const auto frames = Slip(2000).decode(answer);
        return frames.isEmpty() ? QByteArray() : frames.first().mid(1);
    }

    Bootloader &m_bootloader;
    Dfu::ObjectType m_type = Dfu::CommandObject;
};

} // namespace

Q_DECLARE_METATYPE(int Host::*)

/// Hosts that do something else than our client.
class tst_OddHosts : public QObject
{
    Q_OBJECT

private slots:
    void sendsInParts_data();
    void sendsInParts();
    void sendsSeveralRequestsAtOnce();
    void resumesAfterAnyCut();
    void startsAgainAfterAnyAbort();
    void asksAtOddTimes_data();
    void asksAtOddTimes();
    void getsReceipts_data();
    void getsReceipts();
    void fillsTheMtu();
    void overrunsTheMtu();
    void neverEndsAFrame();
};

void tst_OddHosts::sendsInParts_data()
{
    QTest::addColumn<int Host::*>("setting");
    QTest::addColumn<int>("size");
    for (const int size : {1, 2, 20, 64, 244, 1023, 1024}) {
        QTest::addRow("requests with %d bytes of data", size) << &Host::chunkSize << size;
    }
    for (const int size : {1, 2, 63}) {
        QTest::addRow("requests in pieces of %d bytes", size) << &Host::pieceSize << size;
    }
}

void tst_OddHosts::sendsInParts()
{
    QFETCH(int Host::*const, setting);
    QFETCH(const int, size);
    Bootloader bootloader;
    Host host(bootloader);
    host.*setting = size;

    QVERIFY(host.flash(GoldenPackages::unsignedPacket(), GoldenPackages::image()));

    QCOMPARE(bootloader.image(), GoldenPackages::image());
}

void tst_OddHosts::sendsSeveralRequestsAtOnce()
{
    Bootloader bootloader;
    const QByteArray ping = Slip::encode(QByteArray::fromHex("0901"));
    const QByteArray mtu = Slip::encode(QByteArray::fromHex("07"));

    const QByteArray answers = bootloader.receive(ping + mtu + ping);

    const QVector<QByteArray> expected
        = {QByteArray::fromHex("60090101"), QByteArray::fromHex("6007010308"),
           QByteArray::fromHex("60090101")};
    QCOMPARE(Slip(100).decode(answers), expected);
}

/// The host vanishes after each request in turn, so also at each border of an object.
void tst_OddHosts::resumesAfterAnyCut()
{
    constexpr int kEnough = 100;
    bool isWhole = false;
    int cut = 0;
    for (; cut < kEnough && !isWhole; ++cut) {
        Bootloader bootloader;
        Host first(bootloader);
        first.requestsLeft = cut;
        isWhole = first.flash(GoldenPackages::unsignedPacket(), GoldenPackages::image());
        Host second(bootloader);
        QVERIFY2(second.flash(GoldenPackages::unsignedPacket(), GoldenPackages::image()),
                 QByteArray::number(cut));
        QCOMPARE(bootloader.image(), GoldenPackages::image());
    }
    QVERIFY(isWhole);
    QVERIFY(cut > 15);
}

void tst_OddHosts::startsAgainAfterAnyAbort()
{
    constexpr int kRequests = 15;
    for (int cut = 0; cut < kRequests; ++cut) {
        Bootloader bootloader;
        Host host(bootloader);
        host.requestsLeft = cut;
        QVERIFY(!host.flash(GoldenPackages::unsignedPacket(), GoldenPackages::image()));
        QCOMPARE(DfuRequests::ask(bootloader, opcode(Dfu::Abort)), ok(Dfu::Abort));
        QCOMPARE(checksum(bootloader), checksumOf({}));
        QCOMPARE(DfuRequests::flash(bootloader,
                                    {GoldenPackages::unsignedPacket(), GoldenPackages::image()}),
                 ok(Dfu::Execute));
    }
}

void tst_OddHosts::asksAtOddTimes_data()
{
    QTest::addColumn<QList<QByteArray>>("requests");

    const auto row = [](const char *name, std::initializer_list<const char *> requests) {
        QList<QByteArray> all;
        for (const char *request : requests) {
            all.append(QByteArray::fromHex(request));
        }
        QTest::newRow(name) << all;
    };
    row("checksums", {"03", "03"});
    row("pings", {"0900", "09ff"});
    row("the MTU", {"07"});
    row("selections of both types", {"0602", "0601"});
    row("something unknown", {"05", "ff"});
    row("objects of a type that does not exist", {"0600", "010305000000"});
    row("objects of an impossible size", {"010200000000", "010201100000"});
    row("requests that are too short", {"01", "02", "06", "08", "09"});
    row("empty frames", {"", ""});
}

/// Sends the requests after each request of a transfer, which they do not disturb.
void tst_OddHosts::asksAtOddTimes()
{
    QFETCH(const QList<QByteArray>, requests);
    Bootloader bootloader;
    Host host(bootloader);
    host.afterEach = [&](Dfu::ObjectType current) {
        for (const QByteArray &request : requests) {
            DfuRequests::ask(bootloader, request);
        }
        select(bootloader, current);
    };

    QVERIFY(host.flash(GoldenPackages::unsignedPacket(), GoldenPackages::image()));

    QCOMPARE(bootloader.image(), GoldenPackages::image());
}

void tst_OddHosts::getsReceipts_data()
{
    QTest::addColumn<int>("interval");
    QTest::addColumn<QList<int>>("offsets");

    QTest::newRow("each write") << 1 << QList<int>{1000, 2000, 3000, 4000, 4096, 5000};
    QTest::newRow("every third write") << 3 << QList<int>{3000};
    QTest::newRow("every fifth write") << 5 << QList<int>{4096};
    QTest::newRow("more writes than an object has") << 6 << QList<int>();
}

/// The writes are counted anew for each object.
void tst_OddHosts::getsReceipts()
{
    QFETCH(const int, interval);
    QFETCH(const QList<int>, offsets);
    const QByteArray image = GoldenPackages::image();
    Bootloader bootloader;
    sendInitPacket(bootloader, GoldenPackages::unsignedPacket());
    QCOMPARE(DfuRequests::ask(bootloader,
                              opcode(Dfu::SetReceiptNotification) + bytes(quint16(interval))),
             ok(Dfu::SetReceiptNotification));

    QByteArray receipts;
    create(bootloader, Dfu::DataObject, 4096);
    receipts += write(bootloader, image.left(4096));
    QCOMPARE(execute(bootloader), ok(Dfu::Execute));
    create(bootloader, Dfu::DataObject, 904);
    receipts += write(bootloader, image.mid(4096));
    QCOMPARE(execute(bootloader), ok(Dfu::Execute));

    QByteArray expected;
    for (const int offset : offsets) {
        expected += checksumOf(image.left(offset));
    }
    QCOMPARE(receipts.toHex(), expected.toHex());
}

void tst_OddHosts::fillsTheMtu()
{
    const QByteArray image(5000, '\xC0'); // each byte needs an escape
    Bootloader bootloader;
    const QByteArray mtu = DfuRequests::ask(bootloader, opcode(Dfu::GetMtu)).mid(2);
    const int most = (LittleEndian::number<quint16>(mtu) - 1) / 2 - 1;
    Host host(bootloader);
    host.chunkSize = most;

    QVERIFY(host.flash(DfuPackage::forFirmware(image).initPacket, image));

    QCOMPARE(bootloader.image(), image);
}

void tst_OddHosts::overrunsTheMtu()
{
    const QByteArray packet = GoldenPackages::unsignedPacket();
    Bootloader bootloader;
    sendInitPacket(bootloader, packet);
    create(bootloader, Dfu::DataObject, 4096);

    QCOMPARE(
        DfuRequests::ask(bootloader,
                         opcode(Dfu::WriteObject) + QByteArray(Bootloader::kMaxWriteSize + 1, 'x')),
        QByteArray());

    QCOMPARE(checksum(bootloader), checksumOf({}));
    QVERIFY(Host(bootloader).flash(packet, GoldenPackages::image()));
}

void tst_OddHosts::neverEndsAFrame()
{
    const QByteArray block = QByteArray(1000, '\x09');
    Bootloader bootloader;
    Host host(bootloader);
    host.requestsLeft = 8;
    host.flash(GoldenPackages::unsignedPacket(), GoldenPackages::image());

    for (int i = 0; i < 10000; ++i) {
        QCOMPARE(bootloader.receive(block), QByteArray());
    }

    QCOMPARE(bootloader.receive(Slip::encode({})), QByteArray());
    QVERIFY(Host(bootloader).flash(GoldenPackages::unsignedPacket(), GoldenPackages::image()));
}

QTEST_GUILESS_MAIN(tst_OddHosts)
#include "tst_OddHosts.moc"
