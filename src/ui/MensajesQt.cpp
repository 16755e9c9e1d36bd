#include "ui/MensajesQt.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

namespace ui {

namespace {

QWidget *sobre()
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    return QApplication::activeWindow();
}

QMessageBox::Icon iconoDe(base::Icono icono)
{
    switch (icono) {
    case base::Icono::Informacion: return QMessageBox::Information;
    case base::Icono::Advertencia: return QMessageBox::Warning;
    case base::Icono::Critico: return QMessageBox::Critical;
    case base::Icono::Pregunta: return QMessageBox::Question;
    case base::Icono::Ninguno: break;
    }
    return QMessageBox::NoIcon;
}

void componer(QMessageBox &caja, const QString &titulo, const QString &texto, base::Icono icono)
{
    caja.setWindowTitle(titulo);
    caja.setTextFormat(Qt::PlainText);
    caja.setText(texto);
    caja.setTextInteractionFlags(Qt::TextSelectableByMouse);
    caja.setIcon(iconoDe(icono));
}

std::optional<QString>
pedir(const QString &titulo, const QString &texto, const QString &inicial, QLineEdit::EchoMode modo)
{
    QInputDialog dialogo(sobre());
    dialogo.setInputMode(QInputDialog::TextInput);
    dialogo.setWindowTitle(titulo);
    dialogo.setLabelText(texto);
    dialogo.setTextEchoMode(modo);
    dialogo.setTextValue(inicial);
    dialogo.setOkButtonText(QStringLiteral("Aceptar"));
    dialogo.setCancelButtonText(QStringLiteral("Cancelar"));
    if (dialogo.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialogo.textValue();
}

std::optional<QString> elegido(const QString &ruta) { return ruta.isEmpty() ? std::nullopt : std::optional(ruta); }

} // namespace

void MensajesQt::mensaje(const QString &titulo, const QString &texto, base::Icono icono)
{
    QMessageBox caja(sobre());
    componer(caja, titulo, texto, icono);
    QPushButton *aceptar = caja.addButton(QStringLiteral("Aceptar"), QMessageBox::AcceptRole);
    caja.setDefaultButton(aceptar);
    caja.setEscapeButton(aceptar);
    caja.exec();
}

bool MensajesQt::pregunta(const QString &titulo, const QString &texto, bool porDefecto)
{
    QMessageBox caja(sobre());
    componer(caja, titulo, texto, base::Icono::Pregunta);
    QPushButton *si = caja.addButton(QStringLiteral("&Sí"), QMessageBox::YesRole);
    QPushButton *no = caja.addButton(QStringLiteral("&No"), QMessageBox::NoRole);
    caja.setDefaultButton(porDefecto ? si : no);
    caja.setEscapeButton(no);
    caja.exec();
    return caja.clickedButton() == si;
}

bool MensajesQt::confirmar(const QString &titulo, const QString &texto)
{
    QMessageBox caja(sobre());
    componer(caja, titulo, texto, base::Icono::Pregunta);
    QPushButton *aceptar = caja.addButton(QStringLiteral("&Aceptar"), QMessageBox::AcceptRole);
    QPushButton *cancelar = caja.addButton(QStringLiteral("&Cancelar"), QMessageBox::RejectRole);
    caja.setDefaultButton(aceptar);
    caja.setEscapeButton(cancelar);
    caja.exec();
    return caja.clickedButton() == aceptar;
}

std::optional<QString> MensajesQt::pedirTexto(const QString &titulo, const QString &texto, const QString &inicial)
{
    return pedir(titulo, texto, inicial, QLineEdit::Normal);
}

std::optional<QString> MensajesQt::pedirClave(const QString &titulo, const QString &texto)
{
    return pedir(titulo, texto, {}, QLineEdit::Password);
}

std::optional<QString> MensajesQt::elegirArchivo(const QString &titulo, const QString &carpeta, const QString &filtro)
{
    // A folder that this computer does not have, such as "C:", would be taken for the name of a file.
    const QString desde = carpeta.isEmpty() || QFileInfo::exists(carpeta) ? carpeta : QDir::homePath();
    return elegido(QFileDialog::getOpenFileName(sobre(), titulo, desde, filtro));
}

std::optional<QString> MensajesQt::elegirDestino(const QString &titulo, const QString &propuesto, const QString &filtro)
{
    return elegido(QFileDialog::getSaveFileName(sobre(), titulo, propuesto, filtro));
}

std::optional<QString> MensajesQt::elegirCarpeta(const QString &titulo, const QString &carpeta)
{
    return elegido(QFileDialog::getExistingDirectory(sobre(), titulo, carpeta));
}

} // namespace ui
