#include "host/frmBucket.h"

#include "common/look/WindowFit.h"
#include "host/GroupChoices.h"
#include "host/HostMessages.h"
#include "host/frmBucketName.h"
#include "host/help/frmHelp.h"
#include "ui_frmBucket.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>

namespace tallyroom::host {

namespace {

// The entry that is ahead of the buckets with names.
constexpr int everybody = 0;

void choose(QComboBox& box, const QString& code) {
    box.setCurrentIndex(std::max(0, box.findData(code)));
}

QString chosen(const QComboBox& box) {
    return box.currentData().toString();
}

} // namespace

frmBucket::frmBucket(const BucketSelection& selection, NamedBuckets& buckets,
                     const HostData& hostData, bool allowSort, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmBucket>()), m_buckets(buckets),
      m_data(hostData), m_model(selection, hostData, this), m_filter(&m_model, this) {
    m_ui->setupUi(this);
    WindowFit::grow(*this);
    setUpTable(allowSort);
    fillGroupChoices(m_data, *m_ui->Department, *m_ui->Shift, *m_ui->Qualification);
    m_ui->Saved->setVisible(buckets.canKeep());
    listBuckets(selection.name());
    connectControls();
    showCount();
    frmHelp::offerIn(*this);
    WindowFit::fit(*this);
}

frmBucket::~frmBucket() = default;

void frmBucket::setUpTable(bool allowSort) {
    QTableView& table = *m_ui->Employees;
    table.setModel(&m_filter);
    table.setSortingEnabled(allowSort);
    if (allowSort)
        table.sortByColumn(BucketModel::Code, Qt::AscendingOrder);
    table.horizontalHeader()->setSectionsClickable(allowSort);
    constexpr std::pair<int, int> widths[] = {{BucketModel::Code, 90},
                                              {BucketModel::Name, 230},
                                              {BucketModel::Department, 150},
                                              {BucketModel::Shift, 70},
                                              {BucketModel::Qualifications, 100}};
    for (const auto& [column, width] : widths)
        table.setColumnWidth(column, qRound(width * WindowFit::growth()));
    table.setCurrentIndex(m_filter.index(0, 0));
    table.installEventFilter(this);
}

void frmBucket::connectControls() {
    for (auto* box : {m_ui->Department, m_ui->Shift, m_ui->Qualification})
        connect(box, &QComboBox::currentIndexChanged, this, &frmBucket::showFiltered);
    connect(m_ui->Search, &QLineEdit::textChanged, this, &frmBucket::showFiltered);
    connect(m_ui->SelectShown, &QPushButton::clicked, this, [this] {
        m_model.setAllChecked(std::vector<bool>(m_model.checked().size(), false));
        m_model.setChecked(m_filter.shownRows(), true);
    });
    connect(m_ui->AddShown, &QPushButton::clicked, this,
            [this] { m_model.setChecked(m_filter.shownRows(), true); });
    connect(m_ui->ClearShown, &QPushButton::clicked, this,
            [this] { m_model.setChecked(m_filter.shownRows(), false); });
    connect(m_ui->Buckets, &QListWidget::currentRowChanged, this, &frmBucket::chooseListed);
    connect(m_ui->Buckets, &QListWidget::itemClicked, this, &frmBucket::chooseListed);
    connect(m_ui->Buckets, &QListWidget::itemActivated, this, &frmBucket::chooseListed);
    connect(m_ui->SaveBucket, &QPushButton::clicked, this,
            [this] { runCommand(this, [this] { saveBucket(); }); });
    connect(m_ui->RemoveBucket, &QPushButton::clicked, this,
            [this] { runCommand(this, [this] { removeBucket(); }); });
    connect(&m_model, &BucketModel::checkedChanged, this, &frmBucket::showCount);
    connect(m_ui->Buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, m_ui->Search, qOverload<>(&QWidget::setFocus));
}

// There is always a current row, or else the first one would become it, and be chosen, as soon as
// the list is given the focus.
void frmBucket::listBuckets(const QString& current) {
    const QSignalBlocker listing(m_ui->Buckets);
    m_ui->Buckets->clear();
    m_ui->Buckets->addItem(QStringLiteral("Everybody"));
    m_ui->Buckets->setCurrentRow(everybody, QItemSelectionModel::NoUpdate);
    for (const NamedBucket& bucket : m_buckets.all()) {
        m_ui->Buckets->addItem(bucket.name);
        if (bucket.name == current)
            m_ui->Buckets->setCurrentRow(m_ui->Buckets->count() - 1);
    }
    showCount();
}

QString frmBucket::listedName() const {
    const QListWidgetItem* item = m_ui->Buckets->currentItem();
    return item && m_ui->Buckets->currentRow() != everybody ? item->text() : QString();
}

std::vector<bool> frmBucket::listedMembers() const {
    const NamedBucket* bucket = m_buckets.find(listedName());
    return bucket ? bucket->members(m_data.employees)
                  : std::vector<bool>(m_data.employees.size(), true);
}

QString frmBucket::chosenName() const {
    return checked() == listedMembers() ? listedName() : QString();
}

// What is shown is what is selected, unless codes were saved that no criteria describe.
void frmBucket::chooseListed() {
    const NamedBucket* bucket = m_buckets.find(listedName());
    const auto* criteria = bucket ? std::get_if<BucketCriteria>(&bucket->content) : nullptr;
    m_ui->Search->clear();
    setCriteria(criteria ? *criteria : BucketCriteria());
    m_model.setAllChecked(listedMembers());
}

void frmBucket::saveBucket() {
    frmBucketName form(m_buckets, {checkedCodes(), criteria(), criteriaText()}, this);
    if (form.exec() != QDialog::Accepted)
        return;
    const NamedBucket bucket = form.bucket();
    m_buckets.save(bucket);
    listBuckets(bucket.name);
    m_model.setAllChecked(listedMembers());
}

void frmBucket::removeBucket() {
    m_buckets.remove(listedName());
    listBuckets({});
}

void frmBucket::setCriteria(const BucketCriteria& criteria) {
    choose(*m_ui->Department, criteria.department);
    choose(*m_ui->Shift, criteria.shift);
    choose(*m_ui->Qualification, criteria.qualification);
}

BucketCriteria frmBucket::criteria() const {
    return {chosen(*m_ui->Department), chosen(*m_ui->Shift), chosen(*m_ui->Qualification)};
}

QString frmBucket::criteriaText() const {
    QStringList parts;
    for (const QComboBox* box : {m_ui->Department, m_ui->Shift, m_ui->Qualification}) {
        if (!chosen(*box).isEmpty())
            parts << box->currentText().simplified();
    }
    return parts.join(QStringLiteral(" – "));
}

QStringList frmBucket::checkedCodes() const {
    QStringList codes;
    for (std::size_t at = 0; at < checked().size(); ++at) {
        if (checked()[at])
            codes << m_data.employees[at].code;
    }
    return codes;
}

// The table always keeps a current row, which screen readers need.
void frmBucket::showFiltered() {
    m_filter.setCriteria(criteria());
    m_filter.setSearch(m_ui->Search->text());
    if (!m_ui->Employees->currentIndex().isValid())
        m_ui->Employees->setCurrentIndex(m_filter.index(0, 0));
    showCount();
}

void frmBucket::showCount() {
    const int shown = m_filter.rowCount();
    m_ui->SelectShown->setText(QStringLiteral("&Select only the %1 shown").arg(shown));
    m_ui->AddShown->setText(QStringLiteral("&Add the %1 shown").arg(shown));
    m_ui->ClearShown->setText(QStringLiteral("&Clear the %1 shown").arg(shown));
    m_ui->AddShown->setEnabled(shown < m_model.rowCount());
    m_ui->RemoveBucket->setEnabled(!listedName().isEmpty());
    m_ui->Count->setText(
        QStringLiteral("%1 of %2 selected").arg(m_model.checkedCount()).arg(m_model.rowCount()));
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

} // namespace tallyroom::host
