// rust_csv tab|comma plain|quoted INPUT: copies the records to standard output, each cell in quotes if asked.
fn main() -> Result<(), csv::Error> {
    let arguments: Vec<String> = std::env::args().collect();
    let separator = if arguments[1] == "tab" { b'\t' } else { b',' };
    let quoted = arguments[2] == "quoted";
    let style = if quoted { csv::QuoteStyle::Always } else { csv::QuoteStyle::Never };
    let mut reader = csv::ReaderBuilder::new()
        .delimiter(separator).quoting(quoted).has_headers(false).flexible(true).from_path(&arguments[3])?;
    let mut writer = csv::WriterBuilder::new()
        .delimiter(separator).quote_style(style).flexible(true).from_writer(std::io::stdout());
    let mut record = csv::ByteRecord::new();
    while reader.read_byte_record(&mut record)? {
        writer.write_byte_record(&record)?;
    }
    Ok(writer.flush()?)
}
