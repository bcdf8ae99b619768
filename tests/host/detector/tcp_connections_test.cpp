#include "host/detector/tcp_connections.h"

#include <gtest/gtest.h>

#include "foundation/exceptions.h"

namespace {

using detector::TcpConnection;
using detector::TcpTableRow;

TcpConnection connectionOf(std::uint32_t processId, std::uint32_t localPort) {
    TcpConnection connection;
    connection.processId = processId;
    connection.localPort = localPort;
    return connection;
}

TEST(TcpConnections, LocalPortOf0x0000BB01Is443) {
    TcpTableRow row;
    row.state = 2;
    row.localPort = 0x0000BB01;
    EXPECT_EQ(detector::connectionOfRow(row).localPort, 443u);
}

TEST(TcpConnections, State0And13AreUnknown) {
    EXPECT_EQ(detector::tcpStateName(0), "UNKNOWN");
    EXPECT_EQ(detector::tcpStateName(13), "UNKNOWN");
}

TEST(TcpConnections, StateWordsByNumber) {
    const char* const words[] = {"CLOSED",      "LISTEN",     "SYN-SENT",   "SYN-RECEIVED",
                                 "ESTABLISHED", "FIN-WAIT-1", "FIN-WAIT-2", "CLOSE-WAIT",
                                 "CLOSING",     "LAST-ACK",   "TIME-WAIT",  "DELETE-TCB"};
    for (std::uint32_t state = 1; state <= 12; ++state) {
        EXPECT_EQ(detector::tcpStateName(state), words[state - 1]) << state;
    }
}

TEST(TcpConnections, ConnectionOfProcessZeroRaisesWithoutReadingTheTable) {
    int reads = 0;
    const auto readTable = [&] {
        ++reads;
        return std::vector<TcpConnection>{connectionOf(0, 80)};
    };
    EXPECT_THROW(detector::connectionOfProcess(0, readTable), detector::ConnectionNotFound);
    EXPECT_THROW(detector::connectionOfProcess(0), detector::ConnectionNotFound);
    EXPECT_EQ(reads, 0);
}

TEST(TcpConnections, ProcessWithSeveralConnectionsYieldsItsFirstInTableOrder) {
    const std::vector<TcpConnection> table = {connectionOf(7, 1000), connectionOf(42, 8443),
                                              connectionOf(42, 8080), connectionOf(9, 443)};
    EXPECT_EQ(detector::connectionOfProcess(42, [&] { return table; }).localPort, 8443u);
}

TEST(TcpConnections, ProcessWithoutConnectionRaisesConnectionNotFound) {
    const std::vector<TcpConnection> table = {connectionOf(7, 1000)};
    EXPECT_THROW(detector::connectionOfProcess(8, [&] { return table; }),
                 detector::ConnectionNotFound);
}

TEST(TcpConnections, ListeningSocketHasRemotePort0WhateverTheRowHolds) {
    TcpTableRow row;
    row.state = 2;
    row.remotePort = 0x0000BB01;
    EXPECT_EQ(detector::connectionOfRow(row).remotePort, 0u);
    row.state = 5;
    EXPECT_EQ(detector::connectionOfRow(row).remotePort, 443u);
}

TEST(TcpConnections, TableOfNoRowsGivesAnEmptyVector) {
    EXPECT_TRUE(detector::connectionsOfRows({}).empty());
    EXPECT_THROW(detector::connectionOfProcess(5, [] { return std::vector<TcpConnection>{}; }),
                 detector::ConnectionNotFound);
}

TEST(TcpConnections, RowKeepsOwnerStateAndAddresses) {
    TcpTableRow row;
    row.state = 5;
    row.localAddress = 0x0100007F;
    row.localPort = 0x0000901F;
    row.remoteAddress = 0x0201A8C0;
    row.remotePort = 0x00005000;
    row.owningPid = 321;
    const TcpConnection connection = detector::connectionOfRow(row);
    EXPECT_EQ(connection.processId, 321u);
    EXPECT_EQ(connection.state, 5u);
    EXPECT_EQ(connection.stateName, "ESTABLISHED");
    EXPECT_EQ(connection.localAddress, 0x0100007Fu);
    EXPECT_EQ(connection.localPort, 8080u);
    EXPECT_EQ(connection.remoteAddress, 0x0201A8C0u);
    EXPECT_EQ(connection.remotePort, 80u);
}

TEST(TcpConnections, AddressTextIsLowestByteFirstAndEmptyFor0) {
    EXPECT_EQ(detector::ipv4Text(0x0100007F), "127.0.0.1");
    EXPECT_EQ(detector::ipv4Text(0x0201A8C0), "192.168.1.2");
    EXPECT_EQ(detector::ipv4Text(0xFFFFFFFF), "255.255.255.255");
    EXPECT_EQ(detector::ipv4Text(0), "");
}

} // namespace
