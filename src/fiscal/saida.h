// Where a converter writes a fiscal file: the bytes in order, a piece at a time, so that the
// whole file is never in memory; and the validator that reads the pieces as they are written.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/atomic_file.h"
#include "base/worker_thread.h"

namespace infofiscal {

class SaidaFiscal {
 public:
  virtual ~SaidaFiscal() = default;
  // Appends `bytes` to the file.
  virtual void escreve(std::string_view bytes) = 0;
  // Hands the bytes written so far back, from the first, a piece at a time: for the message of
  // a file its validator refused.
  virtual void rele(const std::function<void(std::string_view)>& pedaco) = 0;
  // A folder for the converter's temporary files, on the file's own disk.
  virtual const std::string& pasta_temporaria() const = 0;
};

// The file `caminho` written whole or not at all (an AtomicFile), through a buffer.
class SaidaEmArquivo final : public SaidaFiscal {
 public:
  // Throws Error when the folder does not exist or the temporary cannot be created.
  explicit SaidaEmArquivo(const std::string& caminho);
  void escreve(std::string_view bytes) override;
  void rele(const std::function<void(std::string_view)>& pedaco) override;
  const std::string& pasta_temporaria() const override { return pasta_; }
  // Writes what is buffered and renames the file over `caminho`. Without it, destroying the
  // object leaves any earlier file as it was.
  void confirma();
  // The records (lines) written so far.
  std::size_t registros() const { return registros_; }

 private:
  void descarrega();

  AtomicFile arquivo_;
  std::string pasta_;
  std::string buffer_;
  std::uint64_t escritos_ = 0;  // bytes handed to arquivo_
  std::size_t registros_ = 0;
};

// The file in memory: for tests and benchmarks. Temporary files go to the system's folder.
class SaidaEmMemoria final : public SaidaFiscal {
 public:
  SaidaEmMemoria();
  void escreve(std::string_view bytes) override { bytes_.append(bytes); }
  void rele(const std::function<void(std::string_view)>& pedaco) override { pedaco(bytes_); }
  const std::string& pasta_temporaria() const override { return pasta_; }
  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_, pasta_;
};

// Something that reads the file a piece at a time, in any split, as it is written.
class LeitorDePedacos {
 public:
  virtual ~LeitorDePedacos() = default;
  virtual void le(std::string_view pedaco) = 0;
};

// A validator that reads the file that way.
class Conferencia : public LeitorDePedacos {
 public:
  // The findings, one per broken rule, once the last piece was read. REQUIRES: called once.
  virtual std::vector<std::string> conclui() = 0;
};

// Hands the pieces to `leitor` on a thread of its own, a batch at a time, so that a validator
// reads the file while the converter writes the next records: on two cores the conversion then
// takes about the longer of the two instead of their sum. At most a few batches wait, so the
// memory stays bounded however fast the converter writes. Without a thread to spare, it reads
// them on the caller's.
class LeitorEmParalelo final : public LeitorDePedacos {
 public:
  // `leitor` must outlive this object and is not touched by anyone else until espera returns.
  explicit LeitorEmParalelo(LeitorDePedacos& leitor);

  void le(std::string_view pedaco) override;
  // Waits until `leitor` has read every piece, and throws what it threw. Nothing may be read
  // after it. Destroyed without it (a conversion that failed), what waits is not read.
  // REQUIRES: called once, before `leitor`'s results are used.
  void espera();

 private:
  void entrega();  // hands the batch over, waiting while the queue is full

  LeitorDePedacos& leitor_;
  std::string lote_;      // the batch being filled
  WorkerThread leitura_;  // last: gone first, with the batches it had still to read
};

// Writes to `destino` and hands the same pieces to `leitor` (a validator, or the report's
// figures). Both must outlive it.
class SaidaConferida final : public SaidaFiscal {
 public:
  SaidaConferida(SaidaFiscal& destino, LeitorDePedacos& leitor) : destino_(destino), leitor_(leitor) {}
  void escreve(std::string_view bytes) override {
    leitor_.le(bytes);
    destino_.escreve(bytes);
  }
  void rele(const std::function<void(std::string_view)>& pedaco) override { destino_.rele(pedaco); }
  const std::string& pasta_temporaria() const override { return destino_.pasta_temporaria(); }

 private:
  SaidaFiscal& destino_;
  LeitorDePedacos& leitor_;
};

// Cuts a file read a piece at a time into its lines, at LF, whatever the pieces' boundaries.
class DivisorDeLinhas {
 public:
  // Calls linha(texto, true) for each line that `pedaco` completes; `texto` leaves out the LF
  // and lives until linha returns.
  template <class F>
  void le(std::string_view pedaco, F&& linha) {
    std::size_t pos = 0;
    if (!resto_.empty()) {
      const std::size_t lf = pedaco.find('\n');
      resto_.append(pedaco.substr(0, lf));
      if (lf == std::string_view::npos) return;
      linha(std::string_view(resto_), true);
      resto_.clear();
      pos = lf + 1;
    }
    for (std::size_t lf; (lf = pedaco.find('\n', pos)) != std::string_view::npos; pos = lf + 1)
      linha(pedaco.substr(pos, lf - pos), true);
    resto_.append(pedaco.substr(pos));
  }
  // After the last piece: linha(texto, false) for a last line without LF, if there is one.
  template <class F>
  void fim(F&& linha) {
    if (!resto_.empty()) linha(std::string_view(resto_), false);
    resto_.clear();
  }

 private:
  std::string resto_;  // the line begun and not yet ended
};

}  // namespace infofiscal
