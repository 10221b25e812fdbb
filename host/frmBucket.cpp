#include "host/frmBucket.h"

#include "ui_frmBucket.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QShortcut>

namespace tallyroom::host {

frmBucket::frmBucket(const BucketSelection& selection, const HostData& hostData, bool allowSort,
                     QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmBucket>()), m_model(selection, hostData, this),
      m_filter(&m_model, this) {
    m_ui->setupUi(this);
    setUpTable(allowSort);
    setUpChoices(hostData);
    connectControls();
    showCount();
}

frmBucket::~frmBucket() = default;

void frmBucket::setUpTable(bool allowSort) {
    QTableView& table = *m_ui->Employees;
    table.setModel(&m_filter);
    table.setSortingEnabled(allowSort);
    if (allowSort)
        table.sortByColumn(BucketModel::Code, Qt::AscendingOrder);
    table.horizontalHeader()->setSectionsClickable(allowSort);
    table.setColumnWidth(BucketModel::Code, 90);
    table.setColumnWidth(BucketModel::Name, 230);
    table.setColumnWidth(BucketModel::Department, 150);
    table.setColumnWidth(BucketModel::Shift, 70);
    table.setCurrentIndex(m_filter.index(0, 0));
    table.installEventFilter(this);
}

void frmBucket::setUpChoices(const HostData& hostData) {
    QMap<QString, QString> departments;
    QMap<QString, QString> qualifications;
    for (const Employee& employee : hostData.employees) {
        departments.insert(hostData.departmentName(employee.department), employee.department);
        for (const QString& code : employee.qualifications)
            qualifications.insert(code, code);
    }
    for (auto* box : {m_ui->Department, m_ui->Shift, m_ui->Qualification})
        box->addItem(QStringLiteral("All"), QString());
    for (auto entry = departments.cbegin(); entry != departments.cend(); ++entry)
        m_ui->Department->addItem(entry.key(), entry.value());
    for (const Shift& shift : hostData.shifts)
        m_ui->Shift->addItem(shift.code + QStringLiteral("  ") + shift.description, shift.code);
    for (const QString& code : qualifications)
        m_ui->Qualification->addItem(code, code);
}

void frmBucket::connectControls() {
    const auto connectChoice = [this](QComboBox* box, void (BucketFilter::*set)(const QString&)) {
        connect(box, &QComboBox::currentIndexChanged, this, [this, box, set] {
            (m_filter.*set)(box->currentData().toString());
            showFiltered();
        });
    };
    connectChoice(m_ui->Department, &BucketFilter::setDepartment);
    connectChoice(m_ui->Shift, &BucketFilter::setShift);
    connectChoice(m_ui->Qualification, &BucketFilter::setQualification);
    connect(m_ui->Search, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_filter.setSearch(text);
        showFiltered();
    });
    connect(m_ui->SelectShown, &QPushButton::clicked, this,
            [this] { m_model.setChecked(m_filter.shownRows(), true); });
    connect(m_ui->ClearShown, &QPushButton::clicked, this,
            [this] { m_model.setChecked(m_filter.shownRows(), false); });
    connect(&m_model, &BucketModel::checkedChanged, this, &frmBucket::showCount);
    connect(m_ui->Buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, m_ui->Search, qOverload<>(&QWidget::setFocus));
}

// The table always keeps a current row, which screen readers need.
void frmBucket::showFiltered() {
    if (!m_ui->Employees->currentIndex().isValid())
        m_ui->Employees->setCurrentIndex(m_filter.index(0, 0));
    showCount();
}

void frmBucket::showCount() {
    QString text =
        QStringLiteral("%1 of %2 selected").arg(m_model.checkedCount()).arg(m_model.rowCount());
    if (m_filter.rowCount() < m_model.rowCount())
        text += QStringLiteral(", %1 shown").arg(m_filter.rowCount());
    m_ui->Count->setText(text);
}

// Space switches all selected rows to what the current one becomes.
void frmBucket::toggleSelectedRows() {
    const QModelIndex current = m_filter.mapToSource(m_ui->Employees->currentIndex());
    if (!current.isValid())
        return;
    QModelIndexList rows;
    for (const QModelIndex& index : m_ui->Employees->selectionModel()->selectedRows())
        rows << m_filter.mapToSource(index);
    if (rows.isEmpty())
        rows << current;
    const bool checked = m_model.checked()[static_cast<std::size_t>(current.row())];
    m_model.setChecked(rows, !checked);
}

bool frmBucket::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Space)
        return QDialog::eventFilter(watched, event);
    toggleSelectedRows();
    return true;
}

BucketObject::BucketObject(BucketSelection& selection, const HostData& hostData)
    : m_selection(selection), m_data(hostData) {
    addMethod(QStringLiteral("FillSpot"), [this](const Arguments& args) {
        m_target = argument(args, 0).toObject();
        m_selection.fill(m_target);
        return Variant();
    });
    addMethod(QStringLiteral("fillalist"), [this](const Arguments& args) {
        m_selection.fill(argument(args, 0).toObject());
        return Variant();
    });
    addMethod(QStringLiteral("Show"), [this](const Arguments&) {
        Show();
        return Variant();
    });
    addProperty(
        QStringLiteral("AllowSort"), [this](const Arguments&) { return Variant(m_allowSort); },
        [this](const Arguments& args) {
            m_allowSort = argument(args, 0).toBoolean();
            return Variant();
        });
    addProperty(QStringLiteral("employeefilter"),
                [this](const Arguments&) { return Variant(m_selection.employeeFilter()); });
}

void BucketObject::Show() {
    frmBucket form(m_selection, m_data, m_allowSort, QApplication::activeWindow());
    const bool isKept = form.exec() == QDialog::Accepted;
    const ObjectRef target = std::exchange(m_target, {});
    if (!isKept)
        return;
    m_selection.setSelected(form.checked());
    if (target.isSet())
        m_selection.fill(target);
}

} // namespace tallyroom::host
