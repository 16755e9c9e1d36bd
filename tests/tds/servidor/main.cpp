// A server that speaks SQL Server's protocol over the strict test engine: what the program sends goes through the real
// ODBC driver and the network before it is judged. Listens on loopback only and prints its port.

#include "tds/servidor/Sesion.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <arpa/inet.h>
#include <cstdio>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

int main(int argc, char **argv)
{
    const QCoreApplication aplicacion(argc, argv);
    QCommandLineParser lector;
    lector.addOptions(
        {{QStringLiteral("carpeta"), QString(), QStringLiteral("carpeta")},
         {QStringLiteral("puerto"), QString(), QStringLiteral("puerto"), QStringLiteral("0")},
         {QStringLiteral("clave"), QString(), QStringLiteral("clave")}});
    lector.process(aplicacion);
    static tds::Ajustes ajustes;
    ajustes.carpeta = lector.value(QStringLiteral("carpeta"));
    ajustes.clave = lector.value(QStringLiteral("clave"));

    const int escucha = ::socket(AF_INET, SOCK_STREAM, 0);
    const int si = 1;
    ::setsockopt(escucha, SOL_SOCKET, SO_REUSEADDR, &si, sizeof si);
    sockaddr_in lugar{};
    lugar.sin_family = AF_INET;
    lugar.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    lugar.sin_port = htons(lector.value(QStringLiteral("puerto")).toUShort());
    socklen_t largo = sizeof lugar;
    if (::bind(escucha, reinterpret_cast<sockaddr *>(&lugar), largo) != 0 || ::listen(escucha, 16) != 0)
        return 1;
    ::getsockname(escucha, reinterpret_cast<sockaddr *>(&lugar), &largo);
    std::printf("%d\n", ntohs(lugar.sin_port));
    std::fflush(stdout);
    while (true) {
        const int cliente = ::accept(escucha, nullptr, nullptr);
        if (cliente < 0)
            return 1;
        ::setsockopt(cliente, IPPROTO_TCP, TCP_NODELAY, &si, sizeof si);
        std::thread([cliente] {
            tds::Sesion(cliente, ajustes).atender();
            ::close(cliente);
        }).detach();
    }
}
