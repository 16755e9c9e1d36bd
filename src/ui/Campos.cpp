#include "ui/Campos.h"

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "db/Connection.h"
#include "db/ResultSet.h"
#include "texto/TextoRico.h"
#include "ui/CampoFecha.h"
#include "ui/EditorTexto.h"
#include "ui/ListaCombo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QRegularExpressionValidator>
#include <QScopedValueRollback>

#include <charconv>
#include <climits>

namespace ui {

namespace {

using Tipo = Campo::Tipo;

/// A number as a person writes it: no more digits than tell it apart, a single-precision 0.1 is "0,1".
QString numeroTexto(double numero)
{
    char letras[400];
    const auto fin = double(float(numero)) == numero
        ? std::to_chars(std::begin(letras), std::end(letras), float(numero), std::chars_format::fixed)
        : std::to_chars(std::begin(letras), std::end(letras), numero, std::chars_format::fixed);
    return QString::fromLatin1(letras, fin.ptr - letras).replace(u'.', u',');
}

QString sinTecla(QString etiqueta)
{
    etiqueta.remove(u'&');
    while (etiqueta.endsWith(u':') || etiqueta.endsWith(u' '))
        etiqueta.chop(1);
    return etiqueta;
}

QLineEdit *lineaDeNumero(const char *forma)
{
    auto *linea = new QLineEdit;
    linea->setValidator(new QRegularExpressionValidator(QRegularExpression(QLatin1String(forma)), linea));
    linea->setAlignment(Qt::AlignRight);
    return linea;
}

QWidget *nuevoControl(const Campo &campo)
{
    switch (campo.tipo) {
    case Tipo::Texto: return new QLineEdit;
    case Tipo::Entero: return lineaDeNumero("\\s*-?[0-9]{0,10}\\s*");
    case Tipo::Decimal: return lineaDeNumero("\\s*-?[0-9.,]{0,20}\\s*");
    case Tipo::Fecha: return new CampoFecha;
    case Tipo::Bandera: return new QCheckBox(campo.etiqueta);
    case Tipo::Memo: {
        auto *memo = new QPlainTextEdit;
        memo->setTabChangesFocus(true);
        memo->setFixedHeight(memo->fontMetrics().lineSpacing() * qMax(2, campo.caracteres) + 14);
        return memo;
    }
    case Tipo::Eleccion: {
        auto *lista = new QComboBox;
        for (const auto &[texto, id] : campo.opciones)
            lista->addItem(texto, id);
        lista->setCurrentIndex(-1);
        return lista;
    }
    case Tipo::Lista: {
        auto *lista = new QComboBox;
        ponerEntradas(*lista, campo.opciones);
        return lista;
    }
    case Tipo::Propio: break;
    }
    Q_ASSERT_X(false, "Campos", "a control of the window's own is handed over with agregar()");
    return nullptr;
}

base::Rechazo rechazo(const Campo &campo, const QString &texto)
{
    return {base::titulo::aviso, texto, campo.nombre, base::Icono::Critico};
}

} // namespace

Campos::Campos(QWidget *ventana)
    : QObject(ventana)
    , m_ventana(ventana)
{
}

QWidget *Campos::crear(const Campo &campo)
{
    QWidget *control = nuevoControl(campo);
    control->setParent(m_ventana);
    if (campo.caracteres > 0 && campo.tipo != Tipo::Memo && campo.tipo != Tipo::Bandera)
        control->setMaximumWidth(control->fontMetrics().averageCharWidth() * (campo.caracteres + 2) + 24);
    const int i = atar(campo, control);
    const auto avisar = [this, columna = campo.columna] {
        if (!m_cargando)
            emit cambiado(columna);
    };
    if (auto *memo = qobject_cast<QPlainTextEdit *>(control))
        connect(memo, &QPlainTextEdit::textChanged, this, avisar);
    else if (auto *tilde = qobject_cast<QCheckBox *>(control))
        connect(tilde, &QCheckBox::toggled, this, avisar);
    else if (auto *linea = qobject_cast<QLineEdit *>(control))
        connect(linea, &QLineEdit::textChanged, this, avisar);
    else if (auto *lista = qobject_cast<QComboBox *>(control)) {
        connect(lista, &QComboBox::currentIndexChanged, this, avisar);
        connect(lista, &QComboBox::editTextChanged, this, avisar);
    }
    m_atados[size_t(i)].mostrado = crudo(i);
    return control;
}

void Campos::agregar(const Campo &campo, QWidget *control)
{
    Q_ASSERT(campo.tipo == Tipo::Propio);
    const QMetaProperty propiedad = control->metaObject()->userProperty();
    Q_ASSERT_X(propiedad.hasNotifySignal(), "Campos", "the control needs a USER property with NOTIFY");
    const int i = atar(campo, control);
    m_atados[size_t(i)].mostrado = crudo(i);
    // The one signal known by name only.
    connect(control, propiedad.notifySignal(), this, metaObject()->method(metaObject()->indexOfSlot("avisarPropio()")));
}

void Campos::avisarPropio()
{
    if (m_cargando)
        return;
    for (int i = 0; i < int(m_campos.size()); ++i)
        if (m_atados[size_t(i)].control == sender())
            emit cambiado(m_campos[size_t(i)].columna);
}

int Campos::atar(const Campo &campo, QWidget *control)
{
    const QString clave = campo.columna.toLower();
    Q_ASSERT_X(!m_porColumna.contains(clave), "Campos", qPrintable(campo.columna));
    control->setObjectName(campo.nombre);
    if (!campo.ayuda.isEmpty())
        control->setToolTip(campo.ayuda);
    const int i = int(m_campos.size());
    m_campos.push_back(campo);
    m_atados.push_back({control, nullptr, {}, {}});
    m_porColumna.insert(clave, i);
    return i;
}

QGroupBox *Campos::grupo(const QString &titulo, const std::vector<Campo> &campos, int columnas)
{
    auto *caja = new QGroupBox(titulo, m_ventana);
    colocar(caja, campos, columnas);
    return caja;
}

QWidget *Campos::plano(const std::vector<Campo> &campos, int columnas)
{
    auto *caja = new QWidget(m_ventana);
    colocar(caja, campos, columnas);
    caja->layout()->setContentsMargins(0, 0, 0, 0);
    return caja;
}

void Campos::colocar(QWidget *donde, const std::vector<Campo> &campos, int columnas)
{
    auto *rejilla = new QGridLayout(donde);
    rejilla->setHorizontalSpacing(10);
    for (int c = 0; c < columnas; ++c)
        rejilla->setColumnStretch(2 * c + 1, 1);
    int fila = 0, columna = 0;
    for (const Campo &campo : campos) {
        // A control that was handed over before is placed, any other is made.
        QWidget *control = indice(campo.columna) < 0 ? crear(campo) : this->control(campo.columna);
        if (campo.ancho && columna > 0) {
            ++fila;
            columna = 0;
        }
        const int ocupa = campo.ancho ? 2 * columnas - 1 : 1;
        const auto alineado = control->maximumWidth() < QWIDGETSIZE_MAX ? Qt::AlignLeft : Qt::Alignment();
        if (campo.tipo == Tipo::Bandera) {
            rejilla->addWidget(control, fila, 2 * columna, 1, ocupa + 1);
        } else {
            auto *rotulo = new QLabel(campo.etiqueta, donde);
            rotulo->setBuddy(control);
            rotulo->setAlignment(
                Qt::AlignRight
                | (campo.tipo == Tipo::Memo || campo.tipo == Tipo::Propio ? Qt::AlignTop : Qt::AlignVCenter));
            m_atados[size_t(indice(campo.columna))].etiqueta = rotulo;
            rejilla->addWidget(rotulo, fila, 2 * columna);
            rejilla->addWidget(control, fila, 2 * columna + 1, 1, ocupa, alineado);
        }
        if (campo.ancho || ++columna == columnas) {
            ++fila;
            columna = 0;
        }
    }
}

int Campos::indice(const QString &columna) const { return m_porColumna.value(columna.toLower(), -1); }

QWidget *Campos::control(const QString &columna) const
{
    const int i = indice(columna);
    return i < 0 ? nullptr : m_atados[size_t(i)].control;
}

QLabel *Campos::etiqueta(const QString &columna) const
{
    const int i = indice(columna);
    return i < 0 ? nullptr : m_atados[size_t(i)].etiqueta;
}

void Campos::limitar(const QVector<db::Column> &columnas)
{
    for (const db::Column &columna : columnas)
        if (auto *linea = qobject_cast<QLineEdit *>(control(columna.name)); linea && columna.size > 0)
            linea->setMaxLength(columna.size);
}

void Campos::llenar(int i, db::Connection &conexion)
{
    const Campo &campo = m_campos[size_t(i)];
    Atado &atado = m_atados[size_t(i)];
    auto *lista = qobject_cast<QComboBox *>(atado.control);
    // What is half typed, or an id whose entry comes only now, must survive the new entries.
    const bool intacta = !tocado(i);
    const QString escrito = lista->currentText();
    {
        const QScopedValueRollback cargando(m_cargando, true);
        ui::cargarLista(*lista, conexion, campo.tabla, campo.columnaNombre, campo.opciones);
        if (intacta)
            cargar(i, atado.cargado);
        else if (lista->currentText() != escrito)
            lista->setEditText(escrito);
    }
}

void Campos::cargarListas(db::Connection &conexion)
{
    for (int i = 0; i < int(m_campos.size()); ++i)
        if (m_campos[size_t(i)].tipo == Tipo::Lista && !m_campos[size_t(i)].tabla.isEmpty())
            llenar(i, conexion);
}

void Campos::cargarLista(db::Connection &conexion, const QString &tabla)
{
    for (int i = 0; i < int(m_campos.size()); ++i)
        if (m_campos[size_t(i)].tipo == Tipo::Lista && m_campos[size_t(i)].tabla == tabla)
            llenar(i, conexion);
}

void Campos::mostrar(const db::ResultSet &rows, int fila)
{
    const QScopedValueRollback cargando(m_cargando, true);
    for (int i = 0; i < int(m_campos.size()); ++i) {
        const int columna = rows.column(m_campos[size_t(i)].columna);
        cargar(i, columna < 0 ? QVariant() : rows.value(fila, columna));
    }
}

void Campos::mostrar(const QVariantMap &valores)
{
    const QScopedValueRollback cargando(m_cargando, true);
    for (int i = 0; i < int(m_campos.size()); ++i)
        cargar(i, valores.value(m_campos[size_t(i)].columna));
}

void Campos::actualizar(const db::ResultSet &rows, int fila)
{
    const QScopedValueRollback cargando(m_cargando, true);
    for (int i = 0; i < int(m_campos.size()); ++i)
        if (const int columna = rows.column(m_campos[size_t(i)].columna); columna >= 0 && !tocado(i))
            cargar(i, rows.value(fila, columna));
}

void Campos::cargar(int i, const QVariant &valor)
{
    poner(i, valor);
    m_atados[size_t(i)].cargado = valor;
    m_atados[size_t(i)].mostrado = crudo(i);
}

void Campos::darPorGuardado()
{
    for (int i = 0; i < int(m_campos.size()); ++i) {
        if (tocado(i))
            m_atados[size_t(i)].cargado = leer(i);
        m_atados[size_t(i)].mostrado = crudo(i);
    }
}

/// What the control holds, before it is read as a value.
QVariant Campos::crudo(int i) const
{
    QWidget *control = m_atados[size_t(i)].control;
    switch (m_campos[size_t(i)].tipo) {
    case Tipo::Memo: return qobject_cast<QPlainTextEdit *>(control)->toPlainText();
    case Tipo::Bandera: return qobject_cast<QCheckBox *>(control)->isChecked();
    case Tipo::Eleccion: return qobject_cast<QComboBox *>(control)->currentIndex();
    case Tipo::Lista: {
        const auto *lista = qobject_cast<QComboBox *>(control);
        // Two entries may bear the same text.
        return QVariantList{lista->currentText(), idElegido(*lista, INT_MIN)};
    }
    case Tipo::Propio: return control->metaObject()->userProperty().read(control);
    default: return qobject_cast<QLineEdit *>(control)->text();
    }
}

/// The control's value; null for Null and for what has none.
QVariant Campos::leer(int i) const
{
    QWidget *control = m_atados[size_t(i)].control;
    const QString escrito = [&] {
        const auto *linea = qobject_cast<QLineEdit *>(control);
        return linea ? linea->text().trimmed() : QString();
    }();
    switch (m_campos[size_t(i)].tipo) {
    case Tipo::Texto: return qobject_cast<QLineEdit *>(control)->text();
    case Tipo::Entero: {
        bool bien = false;
        const int numero = escrito.toInt(&bien);
        return bien ? QVariant(numero) : QVariant();
    }
    case Tipo::Decimal: {
        const auto numero = base::leerNumero(escrito);
        return numero ? QVariant(*numero) : QVariant();
    }
    case Tipo::Fecha: {
        const QDate fecha = qobject_cast<CampoFecha *>(control)->fecha();
        return fecha.isValid() ? QVariant(fecha) : QVariant();
    }
    case Tipo::Eleccion: {
        const auto *lista = qobject_cast<QComboBox *>(control);
        return lista->currentIndex() < 0 ? QVariant() : lista->currentData();
    }
    case Tipo::Lista: {
        const auto *lista = qobject_cast<QComboBox *>(control);
        // An emptied list means nothing chosen.
        return lista->currentText().trimmed().isEmpty() ? QVariant(0) : QVariant(idElegido(*lista));
    }
    case Tipo::Memo:
    case Tipo::Bandera:
    case Tipo::Propio: return crudo(i);
    }
    return {};
}

void Campos::poner(int i, const QVariant &valor)
{
    QWidget *control = m_atados[size_t(i)].control;
    switch (m_campos[size_t(i)].tipo) {
    case Tipo::Texto:
    case Tipo::Entero: {
        auto *linea = qobject_cast<QLineEdit *>(control);
        linea->setText(valor.toString());
        linea->setCursorPosition(0); // a long text shows its beginning
        break;
    }
    case Tipo::Decimal:
        qobject_cast<QLineEdit *>(control)->setText(valor.isNull() ? QString() : numeroTexto(valor.toDouble()));
        break;
    case Tipo::Fecha: qobject_cast<CampoFecha *>(control)->setFecha(valor.toDate()); break;
    case Tipo::Memo: qobject_cast<QPlainTextEdit *>(control)->setPlainText(valor.toString()); break;
    case Tipo::Bandera: qobject_cast<QCheckBox *>(control)->setChecked(valor.toBool()); break;
    case Tipo::Eleccion: {
        auto *lista = qobject_cast<QComboBox *>(control);
        // Null is no choice, not the first one.
        lista->setCurrentIndex(valor.isNull() ? -1 : lista->findData(valor.toInt()));
        break;
    }
    case Tipo::Lista: elegirId(*qobject_cast<QComboBox *>(control), valor.toInt()); break;
    case Tipo::Propio: control->metaObject()->userProperty().write(control, valor); break;
    }
}

QVariant Campos::valor(const QString &columna) const
{
    const int i = indice(columna);
    Q_ASSERT_X(i >= 0, "Campos", qPrintable(columna));
    return tocado(i) ? leer(i) : m_atados[size_t(i)].cargado;
}

void Campos::setValor(const QString &columna, const QVariant &valor)
{
    const int i = indice(columna);
    Q_ASSERT_X(i >= 0, "Campos", qPrintable(columna));
    poner(i, valor);
}

QVariant Campos::original(const QString &columna) const
{
    const int i = indice(columna);
    Q_ASSERT_X(i >= 0, "Campos", qPrintable(columna));
    return m_atados[size_t(i)].cargado;
}

QString Campos::escrito(const QString &columna) const
{
    QWidget *control = this->control(columna);
    if (const auto *linea = qobject_cast<QLineEdit *>(control))
        return linea->text();
    const auto *lista = qobject_cast<QComboBox *>(control);
    return lista ? lista->currentText() : QString();
}

QString Campos::ilegible(const QString &columna) const
{
    const int i = indice(columna);
    const QString texto = escrito(columna);
    if (i < 0 || !tocado(i) || texto.trimmed().isEmpty())
        return {};
    const bool legible = m_campos[size_t(i)].tipo == Tipo::Lista
        ? idElegido(*qobject_cast<QComboBox *>(control(columna)), INT_MIN) != INT_MIN
        : !leer(i).isNull();
    return legible ? QString() : texto;
}

void Campos::escribir(const QString &columna, const QString &texto)
{
    QWidget *control = this->control(columna);
    if (auto *linea = qobject_cast<QLineEdit *>(control))
        linea->setText(texto);
    else if (auto *lista = qobject_cast<QComboBox *>(control); lista && lista->isEditable())
        lista->setEditText(texto);
}

QString Campos::comoTexto(const QString &columna, const QVariant &valor) const
{
    const int i = indice(columna);
    Q_ASSERT_X(i >= 0, "Campos", qPrintable(columna));
    const Campo &campo = m_campos[size_t(i)];
    switch (campo.tipo) {
    case Tipo::Fecha: return base::fechaTexto(valor.toDate());
    case Tipo::Decimal: return valor.isNull() ? QString() : numeroTexto(valor.toDouble());
    case Tipo::Bandera: return valor.toBool() ? tr("Sí") : tr("No");
    case Tipo::Eleccion:
    case Tipo::Lista: {
        const auto *lista = qobject_cast<QComboBox *>(control(columna));
        return valor.isNull() ? QString() : lista->itemText(lista->findData(valor.toInt()));
    }
    case Tipo::Propio:
        for (const auto &[texto, id] : campo.opciones)
            if (!valor.isNull() && id == valor.toInt())
                return texto;
        if (qobject_cast<EditorTexto *>(control(columna)))
            return texto::comoPlano(valor.toString());
        return campo.opciones.empty() ? valor.toString() : QString();
    default: return valor.toString();
    }
}

QVariantMap Campos::valores() const
{
    QVariantMap todos;
    for (const Campo &campo : m_campos)
        todos.insert(campo.columna, valor(campo.columna));
    return todos;
}

QVariantMap Campos::cambios() const
{
    QVariantMap distintos;
    for (int i = 0; i < int(m_campos.size()); ++i)
        if (tocado(i))
            distintos.insert(m_campos[size_t(i)].columna, leer(i));
    return distintos;
}

bool Campos::hayCambios() const
{
    for (int i = 0; i < int(m_campos.size()); ++i)
        if (tocado(i))
            return true;
    return false;
}

base::Control Campos::controlar(const QHash<QString, QString> &detalles) const
{
    for (int i = 0; i < int(m_campos.size()); ++i) {
        const Campo &campo = m_campos[size_t(i)];
        if (!tocado(i))
            continue;
        const QString rotulo = sinTecla(campo.etiqueta);
        const QVariant valor = leer(i);
        QWidget *control = m_atados[size_t(i)].control;
        const auto *linea = qobject_cast<QLineEdit *>(control);
        const bool escrito = linea && !linea->text().trimmed().isEmpty();
        if (campo.tipo == Tipo::Fecha && escrito && valor.isNull()) {
            base::Rechazo fecha = base::fechaInvalida(detalles.value(campo.columna, rotulo));
            fecha.campo = campo.nombre;
            return fecha;
        }
        if (campo.tipo == Tipo::Decimal && escrito && valor.isNull())
            return rechazo(campo, tr("Ingrese un número válido en '%1'.").arg(rotulo));
        if (campo.tipo == Tipo::Entero && escrito
            && (valor.isNull() || valor.toInt() < campo.minimo || valor.toInt() > campo.maximo))
            return rechazo(
                campo,
                campo.maximo == Campo().maximo
                    ? tr("Ingrese un número válido en '%1'.").arg(rotulo)
                    : tr("Ingrese en '%1' un número entre %2 y %3.").arg(rotulo).arg(campo.minimo).arg(campo.maximo));
        if (campo.tipo == Tipo::Lista) {
            const auto *lista = qobject_cast<QComboBox *>(control);
            if (!lista->currentText().trimmed().isEmpty() && idElegido(*lista, INT_MIN) == INT_MIN)
                return rechazo(campo, tr("'%1' no está en la lista '%2'.").arg(lista->currentText().trimmed(), rotulo));
        }
    }
    return std::nullopt;
}

} // namespace ui
