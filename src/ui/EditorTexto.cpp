#include "ui/EditorTexto.h"

#include "texto/TextoRico.h"
#include "ui/BarraFormato.h"

#include <QMimeData>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <QVBoxLayout>

namespace ui {

namespace {

/// Marks what is copied from a sheet: it keeps all of its formatting when it is pasted into one.
const QString propio = QStringLiteral("application/x-vastelo-texto");

class Hoja : public QTextEdit
{
public:
    explicit Hoja(QWidget *parent)
        : QTextEdit(parent)
    {
        auto *documento = new texto::DocumentoCerrado(this);
        setDocument(documento);
        // The widget's letter is the document's default one.
        setFont(texto::letra());
        QPalette papel = palette();
        papel.setColor(QPalette::Base, Qt::white);
        papel.setColor(QPalette::Text, Qt::black);
        papel.setColor(QPalette::PlaceholderText, QColor(0x70, 0x78, 0x80));
        setPalette(papel);
        setTabChangesFocus(true);
        documento->setDocumentMargin(8);
    }

protected:
    QMimeData *createMimeDataFromSelection() const override
    {
        QMimeData *datos = QTextEdit::createMimeDataFromSelection();
        datos->setData(propio, "1");
        return datos;
    }
    bool canInsertFromMimeData(const QMimeData *datos) const override { return datos->hasHtml() || datos->hasText(); }
    void insertFromMimeData(const QMimeData *datos) override
    {
        if (!datos->hasHtml()) {
            textCursor().insertText(datos->text());
        } else {
            texto::DocumentoCerrado pegado;
            texto::ponerHtml(pegado, datos->html());
            const QString html
                = texto::htmlDe(pegado, datos->hasFormat(propio) ? texto::Conservar::Todo : texto::Conservar::Sencillo);
            textCursor().insertHtml(html);
        }
        ensureCursorVisible();
    }
};

} // namespace

EditorTexto::EditorTexto(const QString &nombre, QWidget *parent, BarraFormato *barra)
    : QWidget(parent)
    , m_hoja(new Hoja(this))
{
    setObjectName(nombre);
    m_hoja->setObjectName(nombre + QStringLiteral("Hoja"));
    if (!barra)
        barra = m_propia = new BarraFormato(this);
    barra->servir(m_hoja);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(0, 0, 0, 0);
    todo->setSpacing(2);
    if (m_propia)
        todo->addWidget(m_propia);
    todo->addWidget(m_hoja, 1);
    setFocusProxy(m_hoja);
    if (m_propia)
        QWidget::setTabOrder(m_hoja, m_propia);
    connect(m_hoja, &QTextEdit::textChanged, this, &EditorTexto::htmlCambiado);
}

QString EditorTexto::html() const { return texto::htmlDe(*m_hoja->document()); }

void EditorTexto::setHtml(const QString &guardado)
{
    texto::cargar(*m_hoja->document(), guardado);
    m_hoja->moveCursor(QTextCursor::Start);
}

QString EditorTexto::textoPlano() const { return m_hoja->toPlainText(); }

void EditorTexto::insertar(const QString &texto)
{
    m_hoja->textCursor().insertText(texto);
    m_hoja->setFocus(Qt::OtherFocusReason);
}

void EditorTexto::setSoloLectura(bool solo)
{
    m_hoja->setReadOnly(solo);
    if (m_propia)
        m_propia->setVisible(!solo);
}

} // namespace ui
